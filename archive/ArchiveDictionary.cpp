#include "archive/ArchiveDictionary.h"

#include <QHashFunctions>

#include <algorithm>

namespace kestrel {

namespace {

const void* identity(const ArchiveValue& value)
{
    if (const auto array = value.array())
        return array.get();
    if (const auto dictionary = value.dictionary())
        return dictionary.get();
    return value.object().get();
}

} // namespace

// The seed keeps a hostile file from choosing keys that all have one hash.
std::size_t ArchiveDictionary::KeyHash::operator()(const ArchiveValue& key) const
{
    const std::size_t seed = QHashSeed::globalSeed();
    switch (key.type()) {
    case ArchiveValue::Type::Null:
        return seed;
    case ArchiveValue::Type::Boolean:
    case ArchiveValue::Type::Integer:
    case ArchiveValue::Type::Unsigned:
    case ArchiveValue::Type::Real:
        // Equal numbers convert to equal doubles; only very large neighbours share a double.
        return qHash(key.toDouble(), seed);
    case ArchiveValue::Type::String:
        return qHash(key.text(), seed);
    case ArchiveValue::Type::Data:
        return qHash(key.data(), seed);
    default:
        return qHash(identity(key), seed);
    }
}

bool ArchiveDictionary::KeyEqual::operator()(
    const ArchiveValue& left, const ArchiveValue& right) const
{
    if (const void* object = identity(left))
        return object == identity(right);
    return left == right;
}

const ArchiveValue& ArchiveDictionary::value(const ArchiveValue& key) const
{
    static const ArchiveValue null;
    const auto found = m_index.find(key);
    return found == m_index.end() ? null : m_entries[found->second].value;
}

std::vector<ArchiveValue> ArchiveDictionary::keys() const
{
    std::vector<ArchiveValue> keys;
    keys.reserve(m_entries.size());
    for (const Entry& entry : m_entries)
        keys.push_back(entry.key);
    return keys;
}

void ArchiveDictionary::set(ArchiveValue key, ArchiveValue value)
{
    const auto [place, isNew] = m_index.try_emplace(key, m_entries.size());
    if (isNew)
        m_entries.push_back({ std::move(key), std::move(value) });
    else
        m_entries[place->second].value = std::move(value);
}

bool operator==(const ArchiveDictionary& left, const ArchiveDictionary& right)
{
    return left.size() == right.size()
        && std::all_of(left.begin(), left.end(), [&](const ArchiveDictionary::Entry& entry) {
               return right.contains(entry.key) && right.value(entry.key) == entry.value;
           });
}

} // namespace kestrel
