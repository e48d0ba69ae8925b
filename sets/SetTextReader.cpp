#include "archive/ArchiveDictionary.h"
#include "sets/EntryText.h"
#include "sets/SetRoot.h"
#include "sets/SetText.h"
#include "sets/ValueText.h"

#include <algorithm>
#include <map>

namespace kestrel::SetText {

namespace {
using JsonType = JsonValue::Type;
using Storage = ArchiveObject::Storage;
using Table = std::shared_ptr<ArchiveDictionary>;
using JsonCheck::expect;
using JsonCheck::fail;
using JsonCheck::member;

// Reads the parts of the text in the order in which the writer writes them, because $ref needs the
// value before it.
class Reader {
public:
    explicit Reader(const JsonValue& text)
        : m_text(text)
    {
    }

    Root read();

private:
    void readUsual(const QString& name, const QString& memberName, const ArchiveValue& without);
    void readObject(const JsonValue& json);
    void readRootMember(const JsonValue& json);
    void addUsualMember(const QString& name);
    void readKey(const JsonValue& json);
    static void add(
        Table& table, const ArchiveValue& key, ArchiveValue value, const JsonValue& json);
    void order(Table& table, const QString& name);

    const JsonValue& m_text;
    ValueReader m_values;
    std::map<QString, ArchiveValue> m_usual; // the members that have no description of their own
    Root m_root;
    Table m_shortcuts = std::make_shared<ArchiveDictionary>();
    Table m_titles = std::make_shared<ArchiveDictionary>();
};

void Reader::readUsual(const QString& name, const QString& memberName, const ArchiveValue& without)
{
    const JsonValue* const json = m_text.member(name);
    m_usual[memberName] = json ? m_values.value(*json) : without;
}

void Reader::addUsualMember(const QString& name)
{
    ArchiveValue value;
    if (name == SetRoot::OrgShortcutArray)
        value = m_shortcuts;
    else if (name == SetRoot::OrgShortcutTitleArray)
        value = m_titles;
    else
        value = m_usual[name];
    m_root->append({ name, std::move(value), SetRoot::storageOf(name) });
}

void Reader::readObject(const JsonValue& json)
{
    JsonCheck::expectMembers(json, { ValueText::Class, ValueText::Members });
    QStringList classes;
    const JsonValue& names = member(json, ValueText::Class);
    expect(names, JsonType::Array, "an array of names");
    for (const JsonValue& name : names.items)
        classes.append(JsonCheck::string(name));
    if (classes.value(0) != SetRoot::ClassName)
        fail(names, QStringLiteral("the class of a set is ") + SetRoot::ClassName);
    m_root = std::make_shared<ArchiveObject>(classes);
    const JsonValue& members = member(json, ValueText::Members);
    expect(members, JsonType::Array, "an array of members");
    for (const JsonValue& item : members.items)
        readRootMember(item);
}

void Reader::readRootMember(const JsonValue& json)
{
    const bool isUsual = json.is(JsonType::String);
    const QString name
        = JsonCheck::string(isUsual ? json : JsonCheck::member(json, ValueText::Name));
    if (m_root->contains(name))
        fail(json, QStringLiteral("the set has this member twice"));
    if (!isUsual)
        m_root->append(m_values.readMember(json));
    else if (std::find(SetRoot::Members.begin(), SetRoot::Members.end(), name)
        != SetRoot::Members.end())
        addUsualMember(name);
    else
        fail(json, QStringLiteral("\"%1\" needs a value").arg(name));
}

// `json` is where an error is told.
void Reader::add(Table& table, const ArchiveValue& key, ArchiveValue value, const JsonValue& json)
{
    if (table->contains(key))
        fail(json, QStringLiteral("this key is in the set twice"));
    table->set(key, std::move(value));
}

void Reader::readKey(const JsonValue& json)
{
    JsonCheck::expectMembers(json, { Key, Title, Shortcuts, Entry });
    const JsonValue& keyJson = member(json, Key);
    const ArchiveValue key = m_values.value(keyJson);
    if (identityOf(key))
        fail(keyJson, QStringLiteral("a key is no container"));
    if (const JsonValue* const title = json.member(Title))
        add(m_titles, key, m_values.value(*title), keyJson);
    const JsonValue* const entry = json.member(Entry);
    const JsonValue* const shortcuts = json.member(Shortcuts);
    if (entry && shortcuts)
        fail(*entry, QStringLiteral("a key has either \"shortcuts\" or an \"entry\""));
    if (entry)
        add(m_shortcuts, key, m_values.value(*entry), keyJson);
    else if (shortcuts)
        add(m_shortcuts, key, EntryText::entry(*shortcuts), keyJson);
}

// Keys that the order does not name keep their place after those that it names.
void Reader::order(Table& table, const QString& name)
{
    const JsonValue* const json = m_text.member(name);
    if (!json)
        return;
    expect(*json, JsonType::Array, "a list of keys");
    ArchiveDictionary ordered;
    const auto add = [&](const ArchiveValue& key, const ArchiveValue& value) {
        if (!ordered.contains(key))
            ordered.set(key, value);
    };
    for (const JsonValue& item : json->items) {
        const ArchiveValue key = m_values.value(item);
        const auto found = std::find_if(table->begin(), table->end(),
            [&](const ArchiveDictionary::Entry& entry) { return isIdentical(entry.key, key); });
        if (found == table->end())
            fail(item, QStringLiteral("no such key in \"keys\""));
        add(found->key, found->value);
    }
    for (const auto& [key, value] : *table)
        add(key, value);
    *table = std::move(ordered);
}

Root Reader::read()
{
    JsonCheck::expectMembers(m_text, { Type, Version, Object, Keys, ShortcutOrder, TitleOrder });
    readUsual(Type, SetRoot::MyType, SetRoot::TypeTag);
    readUsual(Version, SetRoot::MyVersion, 1);
    if (const JsonValue* const object = m_text.member(Object)) {
        readObject(*object);
    } else {
        m_root = std::make_shared<ArchiveObject>(SetRoot::Classes);
        for (const QString& name : SetRoot::Members)
            addUsualMember(name);
    }
    const JsonValue& keys = member(m_text, Keys);
    expect(keys, JsonType::Array, "a list of keys");
    for (const JsonValue& key : keys.items)
        readKey(key);
    order(m_shortcuts, ShortcutOrder);
    order(m_titles, TitleOrder);
    const ArchiveValue& type = m_root->value(SetRoot::MyType);
    if (!type.isNull() && !(type.isString() && type.text() == SetRoot::TypeTag))
        fail(m_text, QStringLiteral("a set has the type ") + SetRoot::TypeTag);
    return m_root;
}
} // namespace

Root fromText(const QByteArray& text)
{
    const JsonValue json = parsedJson(text);
    return Reader(json).read();
}

} // namespace kestrel::SetText
