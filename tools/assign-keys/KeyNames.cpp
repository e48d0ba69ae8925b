#include "tools/assign-keys/KeyNames.h"

#include <QStringView>

namespace kestrel {

namespace {

struct NamedKey {
    KeyCode code;
    QStringView name;
};

constexpr NamedKey Keys[] = { { 0, u"A" }, { 1, u"S" }, { 2, u"D" }, { 3, u"F" }, { 4, u"H" },
    { 5, u"G" }, { 6, u"Z" }, { 7, u"X" }, { 8, u"C" }, { 9, u"V" }, { 11, u"B" }, { 12, u"Q" },
    { 13, u"W" }, { 14, u"E" }, { 15, u"R" }, { 16, u"Y" }, { 17, u"T" }, { 18, u"1" },
    { 19, u"2" }, { 20, u"3" }, { 21, u"4" }, { 22, u"6" }, { 23, u"5" }, { 24, u"=" },
    { 25, u"9" }, { 26, u"7" }, { 27, u"-" }, { 28, u"8" }, { 29, u"0" }, { 30, u"]" },
    { 31, u"O" }, { 32, u"U" }, { 33, u"[" }, { 34, u"I" }, { 35, u"P" }, { 36, u"RETURN" },
    { 37, u"L" }, { 38, u"J" }, { 39, u"'" }, { 40, u"K" }, { 41, u";" }, { 42, u"\\" },
    { 43, u"," }, { 44, u"/" }, { 45, u"N" }, { 46, u"M" }, { 47, u"." }, { 48, u"TAB" },
    { 49, u"SPACE" }, { 50, u"`" }, { 51, u"DELETE" }, { 53, u"ESC" }, { 63, u"FN" },
    { 64, u"F17" }, { 65, u"NUM ." }, { 67, u"NUM *" }, { 69, u"NUM +" }, { 71, u"NUM CLEAR" },
    { 75, u"NUM /" }, { 76, u"NUM ENTER" }, { 78, u"NUM -" }, { 79, u"F18" }, { 80, u"F19" },
    { 81, u"NUM =" }, { 82, u"NUM 0" }, { 83, u"NUM 1" }, { 84, u"NUM 2" }, { 85, u"NUM 3" },
    { 86, u"NUM 4" }, { 87, u"NUM 5" }, { 88, u"NUM 6" }, { 89, u"NUM 7" }, { 90, u"F20" },
    { 91, u"NUM 8" }, { 92, u"NUM 9" }, { 95, u"NUM ," }, { 96, u"F5" }, { 97, u"F6" },
    { 98, u"F7" }, { 99, u"F3" }, { 100, u"F8" }, { 101, u"F9" }, { 103, u"F11" }, { 105, u"F13" },
    { 106, u"F16" }, { 107, u"F14" }, { 109, u"F10" }, { 111, u"F12" }, { 113, u"F15" },
    { 114, u"HELP" }, { 115, u"HOME" }, { 116, u"PAGE UP" }, { 117, u"DELETE→" }, { 118, u"F4" },
    { 119, u"END" }, { 120, u"F2" }, { 121, u"PAGE DOWN" }, { 122, u"F1" }, { 123, u"←" },
    { 124, u"→" }, { 125, u"↓" }, { 126, u"↑" } };

} // namespace

std::optional<KeyNames::Key> KeyNames::find(const QString& name)
{
    for (const NamedKey& key : Keys) {
        if (key.name.compare(name, Qt::CaseInsensitive) == 0)
            return Key { key.code, key.name.toString() };
    }
    return std::nullopt;
}

} // namespace kestrel
