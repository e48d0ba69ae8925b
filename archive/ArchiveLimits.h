#pragma once

#include <cstddef>

// The limits of property lists and archives. A full assignment set has about 600 values in 6 KB:
// the limits leave room for hundreds of sets and still bound the time and memory that a hostile
// file costs. Every value within the limits for values fits into a file within the limits for
// files, so all that was read can be written and read again.
namespace kestrel::ArchiveLimits {

inline constexpr std::size_t Depth = 128; // nested containers, in the list and in the values

// Values. Those in a shared container count each time the container is reached.
inline constexpr std::size_t Values = 50'000;
inline constexpr std::size_t TextBytes = 2 << 20; // all strings and data together

inline constexpr std::size_t FileBytes = 16 << 20;
inline constexpr std::size_t FileObjects = 500'000;
inline constexpr std::size_t ExpandedBytes = 32 << 20;
// The most keys of one dictionary of the list. An archived object is such a dictionary: its members
// and its class. libplist
// compares each new key with those that it has, or with those of an equal hash, which a file can
// choose. The dictionaries of an archive have their keys in an array.
inline constexpr std::size_t DictionaryKeys = 1'000;
// Bytes that libplist moves in an XML list: for each character reference, the rest of its text.
inline constexpr std::size_t MovedBytes = std::size_t(1) << 30;

// Nodes after libplist has replaced every reference of a binary list by a copy, for a list of up to
// `fileObjects` objects.
constexpr std::size_t expandedObjects(std::size_t fileObjects)
{
    return fileObjects + fileObjects / 5;
}

} // namespace kestrel::ArchiveLimits
