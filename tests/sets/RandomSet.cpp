#include "tests/sets/RandomSet.h"

#include "archive/ArchiveArray.h"
#include "assign/ButtonEntry.h"
#include "sets/SetRoot.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <limits>

namespace kestrel::test {

namespace {
constexpr std::int64_t Integers[] = { 0, 1, -1, 12, 13, 65535, 65536, 0x100000, 0x1E0108,
    std::int64_t(1) << 53, (std::int64_t(1) << 53) + 1, -(std::int64_t(1) << 53) - 1,
    std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::max() };
constexpr QStringView Pieces[] = { u"S", u"⌘", u"^", u"+", u"F5", u"é", u"字", u"😀", u"\"", u"\\",
    u"$null", u"\n", u"\u200F", u"\uFFFD", u"\uFFFF", u"a b", u"\u007F" };
} // namespace

RandomSet::RandomSet(unsigned int seed, Strings strings)
    : m_random(seed)
    , m_strings(strings)
{
}

QString RandomSet::string()
{
    QString text;
    for (int count = below(4); count > 0; --count)
        text += Pieces[below(static_cast<int>(std::size(Pieces)))];
    if (m_strings == Strings::WithUnpairedSurrogates && oneIn(3))
        text.insert(
            below(static_cast<int>(text.size()) + 1), QChar(char16_t(0xD800 + below(0x800))));
    if (oneIn(30))
        text += QChar(0);
    return text;
}

// Each class of reals, and any bits.
double RandomSet::real()
{
    switch (below(6)) {
    case 0:
        return below(2000) / 8.0 - 100;
    case 1:
        return -0.0;
    case 2:
        return std::numeric_limits<double>::infinity();
    default: {
        const std::uint64_t bits = std::uint64_t(m_random()) << 32 | m_random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    }
}

ArchiveValue RandomSet::scalar()
{
    switch (below(8)) {
    case 0:
        return {};
    case 1:
        return oneIn(2);
    case 2:
    case 3:
        return Integers[below(static_cast<int>(std::size(Integers)))];
    case 4:
        return ~std::uint64_t(m_random());
    case 5:
        return real();
    case 6:
        return QByteArray(below(5), static_cast<char>(m_random()));
    default:
        return string();
    }
}

ArchiveValue RandomSet::container(int depth)
{
    if (!m_containers.empty() && oneIn(3))
        return m_containers[static_cast<std::size_t>(below(static_cast<int>(m_containers.size())))];
    ArchiveValue made;
    if (const int kind = below(3); kind == 0) {
        auto array = std::make_shared<ArchiveArray>();
        for (int count = below(5); count > 0; --count)
            array->append(value(depth - 1));
        made = array;
    } else if (kind == 1) {
        auto dictionary = std::make_shared<ArchiveDictionary>();
        for (int count = below(4); count > 0; --count)
            dictionary->set(value(depth - 1), value(depth - 1));
        made = dictionary;
    } else {
        auto object = std::make_shared<ArchiveObject>(QStringList { "NSDate", "NSObject" });
        object->append({ "NS.time", real(), ArchiveObject::Storage::Inline });
        if (oneIn(2))
            object->encodeObject("other", value(depth - 1));
        made = object;
    }
    m_containers.push_back(made);
    return made;
}

ArchiveValue RandomSet::value(int depth)
{
    return depth > 0 && oneIn(3) ? container(depth) : scalar();
}

ArchiveValue RandomSet::entry()
{
    if (m_oddity && oneIn(m_oddity))
        return value(3);
    const ButtonEntry entry = emptyButtonEntry();
    for (std::size_t record = 0; record < ShortcutRecordCount && !oneIn(2); ++record) {
        const std::size_t start = shortcutRecordOffset(record);
        entry->replace(start + ShortcutRecord::Modifiers, below(16) * 0x20000 + below(2) * 0x108);
        entry->replace(start + ShortcutRecord::KeyCode, below(128));
        entry->replace(start + ShortcutRecord::Text, oneIn(4) ? string() : QStringLiteral("K"));
        entry->replace(start + ShortcutRecord::Repeat, oneIn(4));
    }
    if (m_oddity && oneIn(m_oddity))
        entry->replace(static_cast<std::size_t>(below(16)), value(2));
    if (m_oddity && oneIn(m_oddity))
        entry->append(scalar());
    m_containers.push_back(entry);
    return entry;
}

ArchiveValue RandomSet::title()
{
    return m_oddity && oneIn(m_oddity) ? value(2) : ArchiveValue(string());
}

ArchiveValue RandomSet::key(int number)
{
    if (!m_oddity || !oneIn(m_oddity))
        return number;
    return oneIn(3) ? ArchiveValue(static_cast<double>(number)) : value(1);
}

std::vector<ArchiveValue> RandomSet::keys()
{
    std::vector<ArchiveValue> keys;
    for (int number = 1; number <= 1 + below(4); ++number)
        keys.push_back(key(number));
    if (oneIn(4))
        std::shuffle(keys.begin(), keys.end(), m_random);
    return keys;
}

ArchiveValue RandomSet::table(
    const std::vector<ArchiveValue>& keys, ArchiveValue (RandomSet::*content)())
{
    if (m_oddity && oneIn(3 * m_oddity))
        return value(2);
    auto table = std::make_shared<ArchiveDictionary>();
    for (const ArchiveValue& key : keys) {
        if (!m_oddity || !oneIn(m_oddity))
            table->set(key, (this->*content)());
    }
    m_containers.push_back(table);
    return table;
}

SetText::Root RandomSet::next()
{
    m_oddity = oneIn(3) ? 0 : 2 + below(12);
    m_containers.clear();
    const auto usual = keys();
    std::vector<ArchiveObject::Member> members {
        { SetRoot::MyType, SetRoot::TypeTag, ArchiveObject::Storage::Reference },
        { SetRoot::MyVersion, 1, ArchiveObject::Storage::Inline },
        { SetRoot::OrgShortcutArray, table(usual, &RandomSet::entry),
            ArchiveObject::Storage::Reference },
        { SetRoot::OrgShortcutTitleArray,
            table(m_oddity && oneIn(4) ? keys() : usual, &RandomSet::title),
            ArchiveObject::Storage::Reference },
    };
    QStringList classes = SetRoot::Classes;
    if (m_oddity && oneIn(m_oddity)) {
        members.push_back({ "extra", value(3), ArchiveObject::Storage::Reference });
        std::shuffle(members.begin(), members.end(), m_random);
        members.resize(members.size() - static_cast<std::size_t>(below(3)));
        classes.removeLast();
    }
    auto root = std::make_shared<ArchiveObject>(classes);
    for (ArchiveObject::Member& member : members)
        root->append(std::move(member));
    return root;
}

} // namespace kestrel::test
