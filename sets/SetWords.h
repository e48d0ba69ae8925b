#pragma once

#include "assign/ButtonEntry.h"
#include "sets/SetText.h"

#include <vector>

// What sets hold, in words for people.
namespace kestrel::SetWords {

// One line: characters without width, which a terminal could take for commands, become blanks.
[[nodiscard]] QString printable(const QString& text);

// The shortcut as people write it, "⌥⌘K". Empty if the record is not used.
[[nodiscard]] QString shortcut(const ArchiveArray& entry, std::size_t record);
// All that the key types: "⌘S, F5".
[[nodiscard]] QString shortcuts(const ArchiveValue& entry);
[[nodiscard]] QString title(const ArchiveValue& title);

// The value as it stands in the text of a set, in one line.
[[nodiscard]] QString value(const ArchiveValue& value);

// The keys of both tables: integers in their order, then the others.
[[nodiscard]] std::vector<ArchiveValue> keysOf(const std::vector<SetText::Root>& sets);
// The value in that table. Null pointer if the table has no such key, or the set no such table.
[[nodiscard]] const ArchiveValue* find(
    const SetText::Root& set, const QString& table, const ArchiveValue& key);
// The key as the table itself has it, for instance 1.0 for 1. Null pointer if it has none, or if
// there is no table.
[[nodiscard]] const ArchiveValue* ownKey(
    const std::shared_ptr<ArchiveDictionary>& table, const ArchiveValue& key);

} // namespace kestrel::SetWords
