#include "assign/KeyNames.h"

#include <QStringView>

#include <algorithm>
#include <array>

namespace kestrel::KeyNames {

namespace {

struct Name {
    KeyCode keyCode;
    QStringView text;
};

// Sorted by key code. FN is named although that key normally changes only the modifiers.
constexpr std::array<Name, 55> Table { {
    { 36, u"RETURN" },
    { 48, u"TAB" },
    { 49, u"SPACE" },
    { 51, u"DELETE" },
    { 53, u"ESC" },
    { 63, u"FN" },
    { 64, u"F17" },
    { 65, u"NUM ." },
    { 67, u"NUM *" },
    { 69, u"NUM +" },
    { 71, u"NUM CLEAR" },
    { 75, u"NUM /" },
    { 76, u"NUM ENTER" },
    { 78, u"NUM -" },
    { 79, u"F18" },
    { 80, u"F19" },
    { 81, u"NUM =" },
    { 82, u"NUM 0" },
    { 83, u"NUM 1" },
    { 84, u"NUM 2" },
    { 85, u"NUM 3" },
    { 86, u"NUM 4" },
    { 87, u"NUM 5" },
    { 88, u"NUM 6" },
    { 89, u"NUM 7" },
    { 90, u"F20" },
    { 91, u"NUM 8" },
    { 92, u"NUM 9" },
    { 95, u"NUM ," },
    { 96, u"F5" },
    { 97, u"F6" },
    { 98, u"F7" },
    { 99, u"F3" },
    { 100, u"F8" },
    { 101, u"F9" },
    { 103, u"F11" },
    { 105, u"F13" },
    { 106, u"F16" },
    { 107, u"F14" },
    { 109, u"F10" },
    { 111, u"F12" },
    { 113, u"F15" },
    { 114, u"HELP" },
    { 115, u"HOME" },
    { 116, u"PAGE UP" },
    { 117, u"DELETE\u2192" },
    { 118, u"F4" },
    { 119, u"END" },
    { 120, u"F2" },
    { 121, u"PAGE DOWN" },
    { 122, u"F1" },
    { 123, u"\u2190" },
    { 124, u"\u2192" },
    { 125, u"\u2193" },
    { 126, u"\u2191" },
} };
static_assert(std::is_sorted(Table.begin(), Table.end(),
    [](const Name& left, const Name& right) { return left.keyCode < right.keyCode; }));

constexpr std::array<std::uint8_t, 20> FunctionKeys {
    122, 120, 99, 118, 96, 97, 98, 100, 101, 109, // F1 to F10
    103, 111, 105, 107, 113, 106, 64, 79, 80, 90 // F11 to F20
};

} // namespace

QString fixedName(KeyCode keyCode)
{
    const auto found = std::lower_bound(Table.begin(), Table.end(), keyCode,
        [](const Name& name, KeyCode code) { return name.keyCode < code; });
    if (found == Table.end() || found->keyCode != keyCode)
        return {};
    return found->text.toString();
}

std::optional<KeyCode> keyOfFixedName(const QString& name)
{
    const auto found = std::find_if(Table.begin(), Table.end(),
        [&](const Name& key) { return key.text.compare(name, Qt::CaseInsensitive) == 0; });
    return found == Table.end() ? std::nullopt : std::optional(found->keyCode);
}

QString keyName(KeyCode keyCode, const QString& charactersIgnoringModifiers)
{
    const QString name = fixedName(keyCode);
    return name.isEmpty() ? charactersIgnoringModifiers.toUpper() : name;
}

bool isFunctionKey(std::uint64_t keyCode)
{
    return std::find(FunctionKeys.begin(), FunctionKeys.end(), keyCode) != FunctionKeys.end();
}

} // namespace kestrel::KeyNames
