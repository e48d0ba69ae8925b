#pragma once

#include "archive/ArchiveValue.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace kestrel {

// A mutable dictionary of archive values in order of insertion, always held by shared pointer.
// Any value can be a key: numbers are found by numeric value, strings and data by content, the
// rest by identity.
class ArchiveDictionary {
public:
    struct Entry {
        ArchiveValue key;
        ArchiveValue value;
    };

    [[nodiscard]] std::size_t size() const { return m_entries.size(); }
    [[nodiscard]] bool contains(const ArchiveValue& key) const { return m_index.contains(key); }
    // Null when the key is missing.
    [[nodiscard]] const ArchiveValue& value(const ArchiveValue& key) const;
    [[nodiscard]] std::vector<ArchiveValue> keys() const;

    // A key that is there already keeps its place and its own type.
    void set(ArchiveValue key, ArchiveValue value);

    [[nodiscard]] auto begin() const { return m_entries.begin(); }
    [[nodiscard]] auto end() const { return m_entries.end(); }

    friend bool operator==(const ArchiveDictionary& left, const ArchiveDictionary& right);

private:
    struct KeyHash {
        std::size_t operator()(const ArchiveValue& key) const;
    };
    struct KeyEqual {
        bool operator()(const ArchiveValue& left, const ArchiveValue& right) const;
    };

    std::vector<Entry> m_entries;
    std::unordered_map<ArchiveValue, std::size_t, KeyHash, KeyEqual> m_index;
};

} // namespace kestrel
