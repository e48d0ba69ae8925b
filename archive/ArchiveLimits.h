#pragma once

#include <cstddef>

// What is accepted as a property list and as an archive. A full assignment set has about 600
// values in 6 KB, so that each limit leaves room for hundreds of them and still keeps a hostile
// file to a moment and some memory. A value within the limits of values fits, whatever it is made
// of, into a file within the limits of files: what could be read can be written and read again.
namespace kestrel::ArchiveLimits {

inline constexpr std::size_t Depth = 128; // nested containers, of the list as of the values

// Values, those in shared containers counted each time that they are reached.
inline constexpr std::size_t Values = 50'000;
inline constexpr std::size_t TextBytes = 2 << 20; // strings and data of those values

inline constexpr std::size_t FileBytes = 16 << 20;
inline constexpr std::size_t FileObjects = 500'000;
// After every reference of a binary list has become a copy, as libplist makes them.
inline constexpr std::size_t ExpandedObjects = 600'000;
inline constexpr std::size_t ExpandedBytes = 32 << 20;

} // namespace kestrel::ArchiveLimits
