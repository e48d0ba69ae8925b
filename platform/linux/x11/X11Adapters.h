#pragma once

#include "platform/KeyEvents.h"
#include "platform/KeyTranslation.h"
#include "platform/MainLoop.h"
#include "platform/WindowTraits.h"
#include "platform/Workspace.h"

#include <memory>

namespace kestrel {

// The interfaces of platform/ that talk to the X server. They share one connection. Without a
// server they work and report that nothing is there; they connect when a server comes.
struct X11Adapters {
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<KeyEvents> keyEvents;
    std::unique_ptr<KeyTranslation> keyTranslation;
    std::unique_ptr<WindowTraits> windowTraits;
};

// `mainLoop` outlives the adapters.
[[nodiscard]] X11Adapters makeX11Adapters(MainLoop& mainLoop);

} // namespace kestrel
