#pragma once

#include "platform/linux/x11/FrontApplication.h"
#include "platform/linux/x11/X11Connection.h"

namespace kestrel {

// The objects that all X11 adapters share, so that events are read once for all of them.
struct X11Session {
    explicit X11Session(
        MainLoop& mainLoop, std::chrono::milliseconds patience = X11Connection::Patience)
        : connection(mainLoop, patience)
        , front(connection)
    {
    }

    X11Connection connection;
    FrontApplication front;
};

} // namespace kestrel
