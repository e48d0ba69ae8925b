#pragma once

#include "archive/ArchiveArray.h"
#include "sets/JsonValue.h"

#include <memory>
#include <optional>

// The shortcuts of one key as JSON: a list of up to four, each null if it is empty, or an object
// with the shortcut as people write it, "⌥⌘K", its key code and its flags. A person may leave out
// both numbers; the key is then the one that an ANSI keyboard has in the place of that name.
namespace kestrel::EntryText {

// No value unless the entry has sixteen elements of the usual types.
[[nodiscard]] std::optional<JsonValue> json(const ArchiveArray& entry);

// Throws TextError.
[[nodiscard]] std::shared_ptr<ArchiveArray> entry(const JsonValue& shortcuts);

} // namespace kestrel::EntryText
