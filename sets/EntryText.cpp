#include "sets/EntryText.h"

#include "assign/ButtonEntry.h"
#include "sets/ShortcutParser.h"
#include "sets/ValueText.h"

namespace kestrel::EntryText {

namespace {
using ValueType = ArchiveValue::Type;
using Type = JsonValue::Type;

const QString Shortcut = QStringLiteral("shortcut");
const QString Name = QStringLiteral("name"); // only where the shortcut alone would be ambiguous
const QString KeyCode = QStringLiteral("keyCode");
const QString Flags = QStringLiteral("flags");
const QString Repeat = QStringLiteral("repeat"); // false without it

bool isPlainInteger(const ArchiveValue& value)
{
    return value.type() == ValueType::Integer && value.toInt64() >= -ValueText::LargestPlain
        && value.toInt64() <= ValueText::LargestPlain;
}

ModifierFlags modifiersOf(const ArchiveValue& flags)
{
    return static_cast<ModifierFlags>(flags.toInt32());
}

std::optional<JsonValue> recordJson(const ArchiveArray& entry, std::size_t offset)
{
    const ArchiveValue& flags = entry[offset + ShortcutRecord::Modifiers];
    const ArchiveValue& code = entry[offset + ShortcutRecord::KeyCode];
    const ArchiveValue& name = entry[offset + ShortcutRecord::Text];
    const ArchiveValue& repeat = entry[offset + ShortcutRecord::Repeat];
    const bool isBoolean = repeat.type() == ValueType::Boolean;
    if (!isPlainInteger(flags) || !isPlainInteger(code) || !name.isString()
        || !(isBoolean || isPlainInteger(repeat)))
        return std::nullopt;
    const bool isEmpty
        = flags.toInt64() == 0 && code.toInt64() == 0 && name.text().isEmpty() && !repeat.toBool();
    if (isEmpty && !isBoolean)
        return JsonValue();
    JsonValue json = JsonValue::object();
    json.set(Shortcut, JsonValue::ofString(modifierGlyphs(modifiersOf(flags)) + name.text()));
    if (startsWithModifierGlyph(name.text()))
        json.set(Name, JsonValue::ofString(name.text()));
    if (!isEmpty) {
        json.set(KeyCode, JsonValue::ofNumber(code.toInt64()));
        json.set(Flags, JsonValue::ofNumber(flags.toInt64()));
    }
    if (!isBoolean)
        json.set(Repeat, JsonValue::ofNumber(repeat.toInt64()));
    else if (repeat.toBool())
        json.set(Repeat, JsonValue::ofBoolean(true));
    return json;
}

ArchiveValue integer(const JsonValue& record, const QString& name)
{
    const JsonValue& json = JsonCheck::member(record, name);
    JsonCheck::expect(json, Type::Number, "an integer");
    return JsonCheck::integer(json);
}

ArchiveValue repeatOf(const JsonValue& record)
{
    const JsonValue* const repeat = record.member(Repeat);
    if (repeat && repeat->is(Type::Number))
        return JsonCheck::integer(*repeat);
    if (repeat)
        JsonCheck::expect(*repeat, Type::Boolean, "true or false");
    return repeat && repeat->boolean;
}

// The name of the key in a shortcut with these flags.
QString nameIn(const JsonValue& record, const JsonValue& shortcut, ModifierFlags flags)
{
    const QString text = JsonCheck::string(shortcut);
    const QString glyphs = modifierGlyphs(flags);
    const JsonValue* const given = record.member(Name);
    QString name = given ? JsonCheck::string(*given) : text.mid(glyphs.size());
    if (!text.startsWith(glyphs) || (!given && startsWithModifierGlyph(name)))
        JsonCheck::fail(shortcut,
            QStringLiteral("the modifiers of \"%1\" are not those of the flags: correct "
                           "\"keyCode\" and \"flags\", or leave out both")
                .arg(text));
    if (text != glyphs + name)
        JsonCheck::fail(*given, QStringLiteral("the name is not that of \"%1\"").arg(text));
    return name;
}

ArchiveArray recordOf(const JsonValue& json)
{
    if (json.is(Type::Null))
        return emptyShortcutRecord();
    JsonCheck::expectMembers(json, { Shortcut, Name, KeyCode, Flags, Repeat });
    const JsonValue& shortcut = JsonCheck::member(json, Shortcut);
    if (json.member(KeyCode) || json.member(Flags)) {
        const ArchiveValue flags = integer(json, Flags);
        return { flags, integer(json, KeyCode), nameIn(json, shortcut, modifiersOf(flags)),
            repeatOf(json) };
    }
    if (const JsonValue* const name = json.member(Name))
        JsonCheck::fail(*name, QStringLiteral("\"name\" needs \"keyCode\" and \"flags\""));
    const QString text = JsonCheck::string(shortcut);
    if (text.isEmpty())
        return { 0, 0, QString(), repeatOf(json) };
    const auto typed = TypedShortcut::parse(text);
    if (!typed)
        JsonCheck::fail(shortcut,
            QStringLiteral("\"%1\" names no key; a key without a name of its own needs "
                           "\"keyCode\" and \"flags\"")
                .arg(text));
    return { typed->modifiers, typed->key.code, typed->key.name, repeatOf(json) };
}
} // namespace

std::optional<JsonValue> json(const ArchiveArray& entry)
{
    if (entry.size() != ButtonEntrySize)
        return std::nullopt;
    JsonValue list = JsonValue::array();
    for (std::size_t record = 0; record < ShortcutRecordCount; ++record) {
        auto json = recordJson(entry, shortcutRecordOffset(record));
        if (!json)
            return std::nullopt;
        list.items.push_back(*std::move(json));
    }
    while (!list.items.empty() && list.items.back().is(Type::Null))
        list.items.pop_back();
    return list;
}

std::shared_ptr<ArchiveArray> entry(const JsonValue& shortcuts)
{
    JsonCheck::expect(shortcuts, Type::Array, "a list of shortcuts");
    if (shortcuts.items.size() > ShortcutRecordCount)
        JsonCheck::fail(
            shortcuts.items[ShortcutRecordCount], QStringLiteral("a key has up to four shortcuts"));
    auto entry = std::make_shared<ArchiveArray>();
    for (std::size_t record = 0; record < ShortcutRecordCount; ++record) {
        const bool isGiven = record < shortcuts.items.size();
        for (const ArchiveValue& element :
            isGiven ? recordOf(shortcuts.items[record]) : emptyShortcutRecord())
            entry->append(element);
    }
    return entry;
}

} // namespace kestrel::EntryText
