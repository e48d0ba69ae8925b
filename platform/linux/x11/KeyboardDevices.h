#pragma once

#include "platform/linux/x11/KeyLedger.h"
#include "platform/linux/x11/X11Connection.h"

#include <xcb/xinput.h>

#include <optional>
#include <vector>

// What XInput tells about the keyboards of the server. The server must have XInput 2.
namespace kestrel::KeyboardDevices {

using Id = xcb_input_device_id_t;

// The keyboards that feed the user's keyboard focus.
struct Found {
    std::optional<Id> xtest;
    std::vector<Id> users; // those that are enabled
};

// No value when the server cannot tell.
[[nodiscard]] std::optional<Found> find(X11Connection& connection);

// The keys that are down on this keyboard. No value when the server cannot tell.
[[nodiscard]] std::optional<XKeySet> keysDown(X11Connection& connection, Id device);

} // namespace kestrel::KeyboardDevices
