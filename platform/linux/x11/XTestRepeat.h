#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <cstdint>

// Controls whether the XTEST keyboard repeats the keys that are held on it.
namespace kestrel::XTestRepeat {

// Switches the repeat off for this keyboard and for as long as this connection lasts. The server
// switches it on again when the connection ends for any reason. Does nothing when the repeat is off
// already, or when the server does not promise to switch it on again. From then on a controls
// notification arrives when another program has switched the repeat on.
void switchOff(X11Connection& connection, std::uint8_t xtestDevice);

} // namespace kestrel::XTestRepeat
