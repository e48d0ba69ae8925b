#include "sets/SetWords.h"

#include "archive/ArchiveDictionary.h"
#include "sets/SetRoot.h"
#include "sets/ShortcutParser.h"
#include "sets/ValueText.h"

#include <QStringList>

#include <algorithm>

namespace kestrel::SetWords {

QString printable(const QString& text)
{
    QString line = text;
    for (QChar& c : line) {
        const QChar::Category category = c.category();
        if (category == QChar::Other_Control || category == QChar::Other_Format
            || category == QChar::Separator_Line || category == QChar::Separator_Paragraph)
            c = u' ';
    }
    return line;
}

QString shortcut(const ArchiveArray& entry, std::size_t record)
{
    const std::size_t start = shortcutRecordOffset(record);
    const QString name = entry[start + ShortcutRecord::Text].text();
    if (name.isEmpty() || start + ShortcutRecord::Repeat >= entry.size())
        return {};
    const auto flags
        = static_cast<ModifierFlags>(entry[start + ShortcutRecord::Modifiers].toInt32());
    return modifierGlyphs(flags) + printable(name);
}

QString shortcuts(const ArchiveValue& entry)
{
    const auto array = entry.array();
    QStringList texts;
    for (std::size_t record = 0; array && record < ShortcutRecordCount; ++record) {
        if (const QString text = shortcut(*array, record); !text.isEmpty())
            texts.append(text);
    }
    return texts.join(QStringLiteral(", "));
}

QString title(const ArchiveValue& title)
{
    return title.isString() ? printable(title.text()) : QString();
}

QString value(const ArchiveValue& value)
{
    return jsonLine(ValueWriter(value).json(value));
}

std::vector<ArchiveValue> keysOf(const std::vector<SetText::Root>& sets)
{
    ArchiveDictionary seen;
    std::vector<ArchiveValue> keys;
    for (const SetText::Root& set : sets) {
        for (const QString& name : { SetRoot::OrgShortcutArray, SetRoot::OrgShortcutTitleArray }) {
            const auto table = set->value(name).dictionary();
            for (const ArchiveValue& key : table ? table->keys() : std::vector<ArchiveValue>()) {
                if (!seen.contains(key)) {
                    seen.set(key, {});
                    keys.push_back(key);
                }
            }
        }
    }
    const auto others = std::stable_partition(
        keys.begin(), keys.end(), [](const ArchiveValue& key) { return key.isNumber(); });
    std::stable_sort(keys.begin(), others, [](const ArchiveValue& left, const ArchiveValue& right) {
        return left.toInt64() < right.toInt64();
    });
    return keys;
}

const ArchiveValue* find(const SetText::Root& set, const QString& table, const ArchiveValue& key)
{
    const auto dictionary = set->value(table).dictionary();
    return dictionary && dictionary->contains(key) ? &dictionary->value(key) : nullptr;
}

const ArchiveValue* ownKey(const std::shared_ptr<ArchiveDictionary>& table, const ArchiveValue& key)
{
    if (!table || !table->contains(key))
        return nullptr;
    const auto isKey = [&key](const ArchiveDictionary::Entry& entry) {
        return entry.key == key && identityOf(entry.key) == identityOf(key);
    };
    return &std::find_if(table->begin(), table->end(), isKey)->key;
}

} // namespace kestrel::SetWords
