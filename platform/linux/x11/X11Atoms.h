#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <string_view>
#include <vector>

namespace kestrel::X11Atoms {

// Waits for the server; None when it does not answer.
[[nodiscard]] xcb_atom_t intern(X11Connection& connection, std::string_view name);

// The 32-bit items of a property, at most `limit`; nothing when it is missing or of another kind.
[[nodiscard]] std::vector<std::uint32_t> words(
    X11Connection& connection, xcb_window_t window, xcb_atom_t property, std::uint32_t limit);

} // namespace kestrel::X11Atoms
