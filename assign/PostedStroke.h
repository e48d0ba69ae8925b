#pragma once

#include "assign/ButtonEntry.h"
#include "platform/KeyCodes.h"

#include <compare>
#include <optional>

namespace kestrel {

// The key with its modifiers that a shortcut record types.
struct PostedStroke {
    ModifierFlags flags = 0; // those of Modifier::Used
    KeyCode code = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 misreads a defaulted comparison
    friend auto operator<=>(const PostedStroke&, const PostedStroke&) = default;
};

// Reads the record at the offset. No value if it is unused or the entry ends inside it.
[[nodiscard]] std::optional<PostedStroke> postedStroke(
    const ArchiveArray& entry, std::size_t offset);

} // namespace kestrel
