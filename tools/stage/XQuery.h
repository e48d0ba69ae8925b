#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

// Questions to an X server that several tools ask.
namespace kestrel::stage {

using XConnection = std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)>;

template <typename T> using XReply = std::unique_ptr<T, decltype(&std::free)>;

// Throws std::runtime_error when the display does not answer.
[[nodiscard]] XConnection connectTo(const std::string& display);

[[nodiscard]] const xcb_screen_t& firstScreen(xcb_connection_t* connection);

// XCB_ATOM_NONE when the server does not answer.
[[nodiscard]] xcb_atom_t atomOf(xcb_connection_t* connection, std::string_view name);

// The bytes of a property; empty when the window lacks it or is gone.
[[nodiscard]] std::string propertyOf(
    xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property);

// Empty when the window has none.
[[nodiscard]] std::string classOf(xcb_connection_t* connection, xcb_window_t window);

} // namespace kestrel::stage
