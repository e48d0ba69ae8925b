#include "sets/SetCheck.h"

#include "archive/ArchiveDictionary.h"
#include "assign/KeyNames.h"
#include "assign/PostedStroke.h"
#include "assign/UserAssignFile.h"
#include "sets/SetRoot.h"
#include "sets/SetWords.h"
#include "sets/ShortcutParser.h"

#include <algorithm>
#include <map>

namespace kestrel::SetCheck {

namespace {
bool isOfConsole(const ArchiveValue& key)
{
    return key.isNumber() && key == ArchiveValue(key.toInt64()) && key.toInt64() >= 1
        && key.toInt64() <= UserAssignFile::ButtonCount;
}

class Check {
public:
    Check(const SetText::Root& set, const Keyboard& keyboard)
        : m_set(set)
        , m_keyboard(keyboard)
    {
    }

    std::vector<Finding> run();

private:
    struct Record {
        ArchiveValue key;
        QString place; // "shortcut 2 of key 6"
        PostedStroke stroke;
        QString name;
    };

    void add(Kind kind, std::vector<ArchiveValue> keys, const QString& message)
    {
        m_findings.push_back({ kind, std::move(keys), message });
    }
    void checkTables();
    void checkKey(const ArchiveValue& key);
    void checkTitle(const ArchiveValue& key, bool typesSomething);
    bool checkEntry(const ArchiveValue& key, const ArchiveArray& entry);
    bool checkRecord(const ArchiveValue& key, const ArchiveArray& entry, std::size_t record);
    void checkKeyName(const Record& record);
    void checkLayout(const Record& record);
    void checkDuplicates();

    const SetText::Root& m_set;
    const Keyboard& m_keyboard;
    std::vector<Finding> m_findings;
    std::vector<Record> m_used;
};

void Check::checkTables()
{
    for (const QString& name : { SetRoot::OrgShortcutArray, SetRoot::OrgShortcutTitleArray }) {
        if (!m_set->value(name).dictionary())
            add(Kind::Damage, {}, QStringLiteral("the set has no table %1").arg(name));
    }
}

void Check::checkKey(const ArchiveValue& key)
{
    const QString number = SetWords::value(key);
    if (!isOfConsole(key)) {
        add(Kind::Unused, { key }, QStringLiteral("the console has no key %1").arg(number));
        return;
    }
    const ArchiveValue* const entry = SetWords::find(m_set, SetRoot::OrgShortcutArray, key);
    bool typesSomething = false;
    if (entry && entry->array())
        typesSomething = checkEntry(key, *entry->array());
    else if (entry)
        add(Kind::Damage, { key }, QStringLiteral("the entry of key %1 is no list").arg(number));
    checkTitle(key, typesSomething);
}

void Check::checkTitle(const ArchiveValue& key, bool typesSomething)
{
    const QString number = SetWords::value(key);
    const ArchiveValue* const title = SetWords::find(m_set, SetRoot::OrgShortcutTitleArray, key);
    if (title && !title->isString())
        add(Kind::Damage, { key }, QStringLiteral("the name of key %1 is no string").arg(number));
    else if (title && !title->text().trimmed().isEmpty() && !typesSomething)
        add(Kind::NoShortcut, { key },
            QStringLiteral("key %1 has the name \"%2\" and no shortcut")
                .arg(number, SetWords::title(*title)));
}

// Returns true if the key types something.
bool Check::checkEntry(const ArchiveValue& key, const ArchiveArray& entry)
{
    const QString number = SetWords::value(key);
    if (entry.size() < ButtonEntrySize)
        add(Kind::Damage, { key },
            QStringLiteral("the entry of key %1 has %2 elements of %3")
                .arg(number)
                .arg(entry.size())
                .arg(ButtonEntrySize));
    if (entry.size() > ButtonEntrySize)
        add(Kind::Unused, { key },
            QStringLiteral("the entry of key %1 has %2 elements more than are used")
                .arg(number)
                .arg(entry.size() - ButtonEntrySize));
    bool typesSomething = false;
    for (std::size_t record = 0; record < ShortcutRecordCount; ++record) {
        if (shortcutRecordOffset(record) + ShortcutRecordSize <= entry.size())
            typesSomething |= checkRecord(key, entry, record);
    }
    return typesSomething;
}

bool Check::checkRecord(const ArchiveValue& key, const ArchiveArray& entry, std::size_t record)
{
    const std::size_t start = shortcutRecordOffset(record);
    const ArchiveValue& flags = entry[start + ShortcutRecord::Modifiers];
    const ArchiveValue& code = entry[start + ShortcutRecord::KeyCode];
    const ArchiveValue& name = entry[start + ShortcutRecord::Text];
    const QString place
        = QStringLiteral("shortcut %1 of key %2").arg(record + 1).arg(SetWords::value(key));
    if (!flags.isNumber() || !code.isNumber() || !name.isString()
        || !entry[start + ShortcutRecord::Repeat].isNumber()) {
        add(Kind::Damage, { key }, place + QStringLiteral(" has values of other types"));
        return false;
    }
    const auto stroke = postedStroke(entry, start);
    if (!stroke) {
        if (flags.toInt64() != 0 || code.toInt64() != 0)
            add(Kind::Unused, { key },
                place
                    + QStringLiteral(
                        " has a key code or modifiers and no name, so it types nothing"));
        return false;
    }
    m_used.push_back({ key, place, *stroke, name.text() });
    checkKeyName(m_used.back());
    return true;
}

void Check::checkKeyName(const Record& record)
{
    const QString fixed = KeyNames::fixedName(record.stroke.code);
    const auto named = KeyNames::keyOfFixedName(record.name);
    const QString shown = SetWords::printable(record.name);
    if (!m_keyboard.hasKey(record.stroke.code))
        add(Kind::UnknownKey, { record.key },
            QStringLiteral("%1: the keyboard has no key for key code %2 (\"%3\")")
                .arg(record.place)
                .arg(record.stroke.code)
                .arg(shown));
    else if ((!fixed.isEmpty() && fixed != record.name) || (named && *named != record.stroke.code))
        add(Kind::UnknownKey, { record.key },
            QStringLiteral("%1: key code %2 is not that of \"%3\"")
                .arg(record.place)
                .arg(record.stroke.code)
                .arg(shown));
    else if (fixed.isEmpty() && m_keyboard.characters)
        checkLayout(record);
}

// The name of a key without a fixed name is what it types, in upper case. Nothing is known of the
// name of a key that types nothing.
void Check::checkLayout(const Record& record)
{
    const QStringList characters = m_keyboard.characters(record.stroke.code);
    const QString shown = SetWords::printable(record.name);
    const auto types = [&record](const QString& text) { return text.toUpper() == record.name; };
    if (characters.isEmpty())
        add(Kind::UnknownKey, { record.key },
            QStringLiteral("%1: the keyboard layout has no key for key code %2 (\"%3\")")
                .arg(record.place)
                .arg(record.stroke.code)
                .arg(shown));
    else if (!characters.join(QString()).isEmpty()
        && std::none_of(characters.begin(), characters.end(), types))
        add(Kind::UnknownKey, { record.key },
            QStringLiteral("%1: in this keyboard layout the key of \"%2\" types \"%3\"")
                .arg(record.place, shown, SetWords::printable(characters.front().toUpper())));
}

void Check::checkDuplicates()
{
    std::map<PostedStroke, std::vector<const Record*>> byStroke;
    for (const Record& record : m_used)
        byStroke[record.stroke].push_back(&record);
    for (const auto& [stroke, records] : byStroke) {
        std::vector<ArchiveValue> keys;
        QStringList numbers;
        for (const Record* const record : records) {
            if (std::find(keys.begin(), keys.end(), record->key) == keys.end()) {
                keys.push_back(record->key);
                numbers.append(SetWords::value(record->key));
            }
        }
        if (keys.size() > 1)
            add(Kind::Duplicate, keys,
                QStringLiteral("keys %1 have the same shortcut, %2")
                    .arg(numbers.join(QStringLiteral(", ")),
                        modifierGlyphs(stroke.flags) + SetWords::printable(records.front()->name)));
    }
}

std::vector<Finding> Check::run()
{
    checkTables();
    for (const ArchiveValue& key : SetWords::keysOf({ m_set }))
        checkKey(key);
    checkDuplicates();
    return std::move(m_findings);
}
} // namespace

std::vector<Finding> findings(const SetText::Root& set, const Keyboard& keyboard)
{
    return Check(set, keyboard).run();
}

} // namespace kestrel::SetCheck
