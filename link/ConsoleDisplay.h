#pragma once

namespace kestrel {

class MIDIMessage;

// Shows what the console's plug-in section shows. Main thread only.
class ConsoleDisplay {
public:
    virtual ~ConsoleDisplay() = default;

    // `message` carries text for the display.
    virtual void redrawLCDdisplay(const MIDIMessage& message) = 0;
    // `message` sets a knob or a lamp.
    virtual void redrawDSParea(const MIDIMessage& message) = 0;
};

} // namespace kestrel
