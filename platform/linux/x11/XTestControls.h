#pragma once

#include "platform/linux/x11/X11Connection.h"
#include "platform/linux/x11/XkbProtocol.h"

#include <cstdint>

// Controls what the server makes of the keys that are posted on the XTEST keyboard. The user's
// settings hold for all keyboards at first.
namespace kestrel::XTestControls {

// Repeat Keys repeats a key that is held. Bounce Keys ignores a press that comes shortly after a
// release of the same key, and Slow Keys one that does not last.
inline constexpr std::uint32_t Unwanted
    = XCB_XKB_BOOL_CTRL_REPEAT_KEYS | XCB_XKB_BOOL_CTRL_BOUNCE_KEYS | XCB_XKB_BOOL_CTRL_SLOW_KEYS;

// Switches the unwanted controls off for this keyboard and for as long as this connection lasts.
// The server switches them on again when the connection ends for any reason. Does nothing when all
// are off already, or when the server does not promise to switch them on again. From then on a
// controls notification arrives when another program has switched a control on.
void switchOff(X11Connection& connection, std::uint8_t xtestDevice);

// From then on a controls notification arrives when a control of this keyboard changes.
void follow(X11Connection& connection, std::uint8_t device);

// The user has switched these controls off meanwhile, on keyboards of their own. The server does
// not switch them on again for the XTEST keyboard when the connection ends. Returns those that it
// would have switched on.
[[nodiscard]] std::uint32_t leaveOff(
    X11Connection& connection, std::uint8_t xtestDevice, std::uint32_t controls);

// The user has switched these controls on again, which leaveOff() has returned.
void switchOnAtEnd(X11Connection& connection, std::uint8_t xtestDevice, std::uint32_t controls);

} // namespace kestrel::XTestControls
