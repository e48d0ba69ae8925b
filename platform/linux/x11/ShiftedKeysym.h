#pragma once

#include <xcb/xproto.h>

#include <cstdint>
#include <optional>

namespace kestrel {

class X11Connection;

// Asks the X server for the keysym that a key has when Shift counts and every other modifier does
// not, AltGr and the locks included. `state` is that of a key event; its group selects the layout.
// XCB_NO_SYMBOL if the key has none then. No value when the server does not answer, and for a key
// that the layout does not have.
[[nodiscard]] std::optional<xcb_keysym_t> keysymWithShiftAlone(
    X11Connection& connection, xcb_keycode_t key, std::uint16_t state);

// The group of the layout that is in use. No value when the server does not answer.
[[nodiscard]] std::optional<std::uint8_t> groupInUse(X11Connection& connection);

} // namespace kestrel
