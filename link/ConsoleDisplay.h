#pragma once

namespace kestrel {

class MIDIMessage;

// What mirrors the console's plug-in section. Main thread only.
class ConsoleDisplay {
public:
    virtual ~ConsoleDisplay() = default;

    virtual void redrawLCDdisplay(const MIDIMessage& message) = 0; // large-display message
    virtual void redrawDSParea(const MIDIMessage& message) = 0; // knob or lamp message
};

} // namespace kestrel
