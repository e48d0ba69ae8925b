#pragma once

#include <cstddef>
#include <span>
#include <string_view>

// The process table as sysctl() returns it: records of a fixed size. Sizes and offsets are in
// bytes.
namespace kestrel::ProcessRecords {

inline constexpr std::size_t RecordSize = 648;
inline constexpr std::size_t NameOffset = 243;
inline constexpr std::size_t MaxNameLength = 16;

// True when a whole record carries exactly this command name. A partial record at the end is
// ignored.
[[nodiscard]] bool contains(std::span<const std::byte> table, std::string_view commandName);

} // namespace kestrel::ProcessRecords
