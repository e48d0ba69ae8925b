#include "platform/linux/system/SessionEnvironment.h"

#include <cstdlib>

namespace kestrel {

void prepareEnvironment()
{
    // Floating above other programs, key events and the tray are all X11 here, also in a Wayland
    // session. A user who chooses another toolkit back end gets it.
    ::setenv("QT_QPA_PLATFORM", "xcb", 0);
    // PipeWire in the place of JACK makes a note-off of each note-on without velocity that a client
    // receives, and so of the console's heartbeat, unless the client asks it not to.
    ::setenv("PIPEWIRE_PROPS", "{ jack.fix-midi-events = false }", 0);
}

} // namespace kestrel
