#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <cstdint>

// Whether the XTEST keyboard repeats the keys that are held on it.
namespace kestrel::XTestRepeat {

// Switches it off, for this one keyboard and for as long as this connection lasts: the server
// itself switches it on again when the connection ends, however it ends. Nothing happens when it
// is off already, or when the server promises no such thing. From then on a controls notification
// tells when somebody has switched it on again.
void switchOff(X11Connection& connection, std::uint8_t xtestDevice);

} // namespace kestrel::XTestRepeat
