#include "platform/linux/x11/X11Adapters.h"

#include "platform/linux/x11/X11KeyTranslation.h"
#include "platform/linux/x11/X11Session.h"
#include "platform/linux/x11/X11WindowTraits.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/XTestKeyEvents.h"

namespace kestrel {

X11Adapters makeX11Adapters(MainLoop& mainLoop)
{
    const auto session = std::make_shared<X11Session>(mainLoop);
    X11Adapters adapters { std::make_unique<X11Workspace>(session),
        std::make_unique<XTestKeyEvents>(session), std::make_unique<X11KeyTranslation>(session),
        std::make_unique<X11WindowTraits>(session) };
    session->connection.ensureOpen();
    return adapters;
}

} // namespace kestrel
