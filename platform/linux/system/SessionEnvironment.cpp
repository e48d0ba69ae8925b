#include "platform/linux/system/SessionEnvironment.h"

#include <cstdlib>

namespace kestrel {

void prepareEnvironment()
{
    // Floating windows, key events and the tray use X11 here, also in a Wayland session. A user who
    // sets another Qt platform plug-in gets it.
    ::setenv("QT_QPA_PLATFORM", "xcb", 0);
    // PipeWire's JACK turns a note-on with velocity 0 into a note-off, unless the client asks it
    // not to. The console's heartbeat is such a note-on.
    ::setenv("PIPEWIRE_PROPS", "{ jack.fix-midi-events = false }", 0);
}

} // namespace kestrel
