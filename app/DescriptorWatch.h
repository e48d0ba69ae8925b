#pragma once

#include "platform/MainLoop.h"

#include <functional>
#include <memory>

namespace kestrel {

// The two ways in which QtMainLoop watches a descriptor. Both call `ready` on the main thread
// whenever `descriptor` is readable. `ready` may turn the loop, and may destroy the watch that
// calls it.

// Through GLib's loop, before everything else that waits there: a packet of the console does not
// pass through Qt's event handling. Null when Qt does not run on GLib.
std::unique_ptr<MainLoop::Watch> watchThroughGlib(
    int descriptor, const std::function<void()>& ready);

std::unique_ptr<MainLoop::Watch> watchThroughQt(int descriptor, const std::function<void()>& ready);

} // namespace kestrel
