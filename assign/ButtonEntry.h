#pragma once

#include "archive/ArchiveArray.h"

#include <memory>

namespace kestrel {

// The shortcuts of one user-assignable button: four records of modifier flags, key code, display
// text and repeat flag. Shared: every holder of the entry sees and makes every change. Null means
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

// Where the record starts in a button entry.
[[nodiscard]] constexpr std::size_t shortcutRecordOffset(std::size_t record)
{
    return record * ShortcutRecordSize;
}

[[nodiscard]] ArchiveArray emptyShortcutRecord();
[[nodiscard]] ButtonEntry emptyButtonEntry();

// Copies the record at the offset. A source that ends inside the record is first completed with
// the elements of an empty one. A source that ends before it gets an empty record appended, and
// then nothing is copied. A null destination takes nothing.
void copyShortcutRecord(
    std::size_t offset, const ButtonEntry& source, const ButtonEntry& destination);
void copyButtonEntry(const ButtonEntry& source, const ButtonEntry& destination);

} // namespace kestrel
