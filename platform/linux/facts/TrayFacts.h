#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <optional>

namespace kestrel {

// Whether icons have a place in the desktop: an X11 tray, or a host of status notifiers on the
// session's D-Bus. No value when nobody can know. Waits a few seconds at most.
[[nodiscard]] std::optional<bool> hasTray(X11Connection& connection);

} // namespace kestrel
