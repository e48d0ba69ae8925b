#include "sets/NamedKey.h"

#include "assign/KeyNames.h"

#include <QStringView>

namespace kestrel {

namespace {

struct TypingKey {
    KeyCode code;
    QStringView name;
};

// The keys whose name is the character that they type. A shortcut field gets these names from the
// keyboard layout, which a command line does not have.
constexpr TypingKey AnsiKeys[] = { { 0, u"A" }, { 1, u"S" }, { 2, u"D" }, { 3, u"F" }, { 4, u"H" },
    { 5, u"G" }, { 6, u"Z" }, { 7, u"X" }, { 8, u"C" }, { 9, u"V" }, { 11, u"B" }, { 12, u"Q" },
    { 13, u"W" }, { 14, u"E" }, { 15, u"R" }, { 16, u"Y" }, { 17, u"T" }, { 18, u"1" },
    { 19, u"2" }, { 20, u"3" }, { 21, u"4" }, { 22, u"6" }, { 23, u"5" }, { 24, u"=" },
    { 25, u"9" }, { 26, u"7" }, { 27, u"-" }, { 28, u"8" }, { 29, u"0" }, { 30, u"]" },
    { 31, u"O" }, { 32, u"U" }, { 33, u"[" }, { 34, u"I" }, { 35, u"P" }, { 37, u"L" },
    { 38, u"J" }, { 39, u"'" }, { 40, u"K" }, { 41, u";" }, { 42, u"\\" }, { 43, u"," },
    { 44, u"/" }, { 45, u"N" }, { 46, u"M" }, { 47, u"." }, { 50, u"`" } };

} // namespace

std::optional<NamedKey> NamedKey::find(const QString& name)
{
    if (const auto code = KeyNames::keyOfFixedName(name))
        return NamedKey { *code, KeyNames::fixedName(*code) };
    for (const TypingKey& key : AnsiKeys) {
        if (key.name.compare(name, Qt::CaseInsensitive) == 0)
            return NamedKey { key.code, key.name.toString() };
    }
    return std::nullopt;
}

QString NamedKey::nameOf(KeyCode code)
{
    QString fixed = KeyNames::fixedName(code);
    if (!fixed.isEmpty())
        return fixed;
    for (const TypingKey& key : AnsiKeys) {
        if (key.code == code)
            return key.name.toString();
    }
    return QStringLiteral("key %1").arg(code);
}

} // namespace kestrel
