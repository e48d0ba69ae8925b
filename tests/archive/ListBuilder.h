#pragma once

#include "archive/Bytes.h"

#include <initializer_list>
#include <string_view>

namespace kestrel::test {

// A binary property list written object by object, right or wrong, with one-byte references.
class ListBuilder {
public:
    // Each returns the number of the object.
    std::size_t raw(Bytes object);
    std::size_t text(std::string_view ascii); // up to 127 characters
    std::size_t integer(std::uint8_t value);
    std::size_t uid(std::uint8_t value);
    std::size_t array(std::initializer_list<std::size_t> elements);
    // Keys and values in turn.
    std::size_t dictionary(std::initializer_list<std::size_t> members);

    // With the root last added unless one is given.
    [[nodiscard]] Bytes list() const;
    [[nodiscard]] Bytes list(std::size_t root) const;

    static constexpr std::size_t TrailerSize = 32;

private:
    std::vector<Bytes> m_objects;
};

} // namespace kestrel::test
