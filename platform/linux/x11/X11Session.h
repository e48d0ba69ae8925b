#pragma once

#include "platform/linux/x11/FrontApplication.h"
#include "platform/linux/x11/X11Connection.h"

namespace kestrel {

// What the adapters share, so that one reading of the connection serves all of them.
struct X11Session {
    explicit X11Session(MainLoop& mainLoop)
        : connection(mainLoop)
        , front(connection)
    {
    }

    X11Connection connection;
    FrontApplication front;
};

} // namespace kestrel
