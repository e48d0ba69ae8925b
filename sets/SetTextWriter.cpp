#include "archive/ArchiveDictionary.h"
#include "sets/EntryText.h"
#include "sets/SetRoot.h"
#include "sets/SetText.h"
#include "sets/ValueText.h"

#include <algorithm>

namespace kestrel::SetText {

namespace {
// One element of "keys".
struct KeyRow {
    ArchiveValue key;
    const ArchiveValue* entry = nullptr; // null without one, likewise the title
    const ArchiveValue* title = nullptr;
};

class Writer {
public:
    explicit Writer(const ArchiveObject& root)
        : m_root(root)
        , m_values(ArchiveValue(std::make_shared<ArchiveObject>(root)))
    {
    }

    JsonValue json();

private:
    using Value = const ArchiveValue* KeyRow::*;

    [[nodiscard]] bool isUsual(const ArchiveObject::Member& member) const;
    [[nodiscard]] bool isUsualTable(const ArchiveValue& value) const;
    [[nodiscard]] const ArchiveValue* usualMember(const QString& name) const;
    [[nodiscard]] bool isUsualObject() const;
    JsonValue object();
    void addRows(const ArchiveValue* table, Value value);
    void sortRows();
    JsonValue keyJson(const KeyRow& row);
    void addOrder(JsonValue& json, const QString& name, const ArchiveValue* table, Value value);

    const ArchiveObject& m_root;
    ValueWriter m_values;
    std::vector<KeyRow> m_rows;
};

// A table whose keys are scalars and which nothing else holds.
bool Writer::isUsualTable(const ArchiveValue& value) const
{
    const auto table = value.dictionary();
    return table && !m_values.isShared(value)
        && std::none_of(table->begin(), table->end(),
            [](const ArchiveDictionary::Entry& entry) { return identityOf(entry.key); });
}

// True if the member is described by "type", "version" or "keys" alone.
bool Writer::isUsual(const ArchiveObject::Member& member) const
{
    const auto& names = SetRoot::Members;
    if (std::find(names.begin(), names.end(), member.name) == names.end()
        || member.storage != SetRoot::storageOf(member.name))
        return false;
    return member.name == SetRoot::MyType || member.name == SetRoot::MyVersion
        || isUsualTable(member.value);
}

// Null if the root has no such member or an unusual one.
const ArchiveValue* Writer::usualMember(const QString& name) const
{
    const auto& members = m_root.members();
    const auto found = std::find_if(members.begin(), members.end(),
        [&](const ArchiveObject::Member& member) { return member.name == name; });
    return found != members.end() && isUsual(*found) ? &found->value : nullptr;
}

bool Writer::isUsualObject() const
{
    return m_root.classes() == SetRoot::Classes
        && std::equal(m_root.members().begin(), m_root.members().end(), SetRoot::Members.begin(),
            SetRoot::Members.end(),
            [this](const ArchiveObject::Member& member, const QString& name) {
                return member.name == name && isUsual(member);
            });
}

JsonValue Writer::object()
{
    JsonValue classes = JsonValue::array();
    for (const QString& name : m_root.classes())
        classes.items.push_back(JsonValue::ofString(name));
    JsonValue members = JsonValue::array();
    for (const ArchiveObject::Member& member : m_root.members())
        members.items.push_back(
            isUsual(member) ? JsonValue::ofString(member.name) : m_values.json(member));
    JsonValue object = JsonValue::object();
    object.set(ValueText::Class, std::move(classes));
    object.set(ValueText::Members, std::move(members));
    return object;
}

void Writer::addRows(const ArchiveValue* table, Value value)
{
    if (!table)
        return;
    for (const ArchiveDictionary::Entry& entry : *table->dictionary()) {
        auto row = std::find_if(m_rows.begin(), m_rows.end(),
            [&](const KeyRow& row) { return !(row.*value) && isIdentical(row.key, entry.key); });
        if (row == m_rows.end())
            row = m_rows.insert(row, KeyRow { entry.key });
        (*row).*value = &entry.value;
    }
}

// Integers first, in their order, so that the text does not depend on the order of the archive.
void Writer::sortRows()
{
    const auto isInteger
        = [](const KeyRow& row) { return row.key.type() == ArchiveValue::Type::Integer; };
    const auto others = std::stable_partition(m_rows.begin(), m_rows.end(), isInteger);
    std::stable_sort(m_rows.begin(), others, [](const KeyRow& left, const KeyRow& right) {
        return left.key.toInt64() < right.key.toInt64();
    });
}

JsonValue Writer::keyJson(const KeyRow& row)
{
    JsonValue json = JsonValue::object();
    json.set(Key, m_values.json(row.key));
    if (row.title)
        json.set(Title, m_values.json(*row.title));
    if (row.entry) {
        const auto array = m_values.isShared(*row.entry) ? nullptr : row.entry->array();
        if (auto shortcuts = array ? EntryText::json(*array) : std::nullopt)
            json.set(Shortcuts, *std::move(shortcuts));
        else
            json.set(Entry, m_values.json(*row.entry));
    }
    return json;
}

void Writer::addOrder(JsonValue& json, const QString& name, const ArchiveValue* table, Value value)
{
    if (!table)
        return;
    JsonValue order = JsonValue::array();
    auto row = m_rows.begin();
    bool isNatural = true;
    for (const ArchiveDictionary::Entry& entry : *table->dictionary()) {
        row = std::find_if(row, m_rows.end(), [value](const KeyRow& row) { return row.*value; });
        isNatural = isNatural && row != m_rows.end() && (*row).*value == &entry.value;
        if (row != m_rows.end())
            ++row;
        order.items.push_back(m_values.json(entry.key));
    }
    if (!isNatural)
        json.set(name, std::move(order));
}

JsonValue Writer::json()
{
    JsonValue json = JsonValue::object();
    if (const ArchiveValue* const type = usualMember(SetRoot::MyType))
        json.set(Type, m_values.json(*type));
    if (const ArchiveValue* const version = usualMember(SetRoot::MyVersion))
        json.set(Version, m_values.json(*version));
    if (!isUsualObject())
        json.set(Object, object());
    const ArchiveValue* const shortcuts = usualMember(SetRoot::OrgShortcutArray);
    const ArchiveValue* const titles = usualMember(SetRoot::OrgShortcutTitleArray);
    addRows(shortcuts, &KeyRow::entry);
    addRows(titles, &KeyRow::title);
    sortRows();
    JsonValue keys = JsonValue::array();
    for (const KeyRow& row : m_rows)
        keys.items.push_back(keyJson(row));
    json.set(Keys, std::move(keys));
    addOrder(json, ShortcutOrder, shortcuts, &KeyRow::entry);
    addOrder(json, TitleOrder, titles, &KeyRow::title);
    return json;
}
} // namespace

QByteArray text(const Root& set)
{
    return jsonText(Writer(*set).json());
}

} // namespace kestrel::SetText
