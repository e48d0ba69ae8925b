#pragma once

#include "archive/ArchiveValue.h"

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace kestrel {

// A mutable dictionary of archive values that keeps the order of insertion. It is always held by a
// shared pointer. Any value can be a key: numbers are compared by numeric value, strings and data
// by content, all other values by identity.
class ArchiveDictionary {
public:
    struct Entry {
        ArchiveValue key;
        ArchiveValue value;
    };

    [[nodiscard]] std::size_t size() const { return m_entries.size(); }
    [[nodiscard]] bool contains(const ArchiveValue& key) const { return m_index.contains(key); }
    // A null value when the key is missing.
    [[nodiscard]] const ArchiveValue& value(const ArchiveValue& key) const;
    [[nodiscard]] std::vector<ArchiveValue> keys() const;

    // An existing key keeps its place in the order and its own type.
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
