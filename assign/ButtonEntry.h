#pragma once

#include "archive/ArchiveArray.h"

namespace kestrel {

// The shortcuts of one user-assignable button: four records of modifier flags, key code, display
// text and repeat flag. Shared: whoever holds the entry sees and makes every change. Null means
// that nothing is assigned.
using ButtonEntry = std::shared_ptr<ArchiveArray>;

inline constexpr std::size_t ShortcutRecordSize = 4;
inline constexpr std::size_t ShortcutRecordCount = 4;
inline constexpr std::size_t ButtonEntrySize = ShortcutRecordSize * ShortcutRecordCount;

// Places inside a shortcut record.
namespace ShortcutRecord {
inline constexpr std::size_t Modifiers = 0;
inline constexpr std::size_t KeyCode = 1;
inline constexpr std::size_t Text = 2; // empty = record unused
inline constexpr std::size_t Repeat = 3;
} // namespace ShortcutRecord

} // namespace kestrel
