#pragma once

#include <cstdint>
#include <string_view>

// What the reader and the writer of binary property lists both know of the format.
namespace kestrel::BinaryListFormat {

inline constexpr std::string_view Magic = "bplist00";

// The types: the high nibble of an object's first byte.
enum Marker : std::uint8_t {
    Simple = 0x0,
    Integer = 0x1,
    Real = 0x2,
    Date = 0x3,
    Data = 0x4,
    Ascii = 0x5,
    Utf16 = 0x6,
    Uid = 0x8,
    Array = 0xA,
    Dictionary = 0xD,
};

} // namespace kestrel::BinaryListFormat
