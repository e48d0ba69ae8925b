#pragma once

#include "platform/KeyEvents.h"
#include "platform/MainLoop.h"
#include "platform/WindowTraits.h"
#include "platform/Workspace.h"

#include <memory>

namespace kestrel {

// The seams that talk to the X server, over one connection of their own. They work, and say that
// nothing is there, when there is no server; they find it when it comes.
struct X11Adapters {
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<KeyEvents> keyEvents;
    std::unique_ptr<WindowTraits> windowTraits;
};

// `mainLoop` outlives the adapters.
[[nodiscard]] X11Adapters makeX11Adapters(MainLoop& mainLoop);

} // namespace kestrel
