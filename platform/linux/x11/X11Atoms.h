#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <string_view>
#include <vector>

namespace kestrel::X11Atoms {

// Waits for the server. Returns XCB_ATOM_NONE when the server does not answer.
[[nodiscard]] xcb_atom_t intern(X11Connection& connection, std::string_view name);

// Returns the 32-bit items of a property, at most `limit`. Empty when the property is missing or
// has items of another size.
[[nodiscard]] std::vector<std::uint32_t> words(
    X11Connection& connection, xcb_window_t window, xcb_atom_t property, std::uint32_t limit);

} // namespace kestrel::X11Atoms
