#pragma once

#include "archive/ArchiveValue.h"

#include <cstddef>
#include <initializer_list>
#include <vector>

namespace kestrel {

// A mutable array of archive values. It is always held by a shared pointer.
class ArchiveArray {
public:
    ArchiveArray() = default;
    ArchiveArray(std::initializer_list<ArchiveValue> values)
        : m_values(values)
    {
    }

    [[nodiscard]] std::size_t size() const { return m_values.size(); }
    // A null value for an index beyond the end.
    [[nodiscard]] const ArchiveValue& at(std::size_t index) const;
    [[nodiscard]] const ArchiveValue& operator[](std::size_t index) const { return at(index); }

    void append(ArchiveValue value) { m_values.push_back(std::move(value)); }
    // Does nothing for an index beyond the end.
    void replace(std::size_t index, ArchiveValue value);

    [[nodiscard]] auto begin() const { return m_values.begin(); }
    [[nodiscard]] auto end() const { return m_values.end(); }

    friend bool operator==(const ArchiveArray&, const ArchiveArray&) = default;

private:
    std::vector<ArchiveValue> m_values;
};

} // namespace kestrel
