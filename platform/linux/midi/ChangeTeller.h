#pragma once

#include "platform/MIDIServices.h"
#include "platform/MainLoop.h"
#include "platform/linux/midi/Alarm.h"
#include "platform/linux/midi/ChangePace.h"

#include <functional>
#include <memory>

namespace kestrel {

class ForeignPorts;

// Tells the receiver of changes of the foreign ports: a burst in one turn of the main loop, and not
// too often. Main thread only.
class ChangeTeller {
public:
    // `remind` is called from the main loop when it is time to call tellDue() again. `mainLoop`
    // outlives this object.
    ChangeTeller(MainLoop& mainLoop, std::function<void()> remind);

    void begin(MIDIServices::NotifyProc notify, void* refCon);
    // Nothing is told from then on, not even the rest of a burst that is being told.
    void end();

    // Tells what may be told now.
    void tellDue(ForeignPorts& ports);
    // Tells of PortChanges::Kinds at once. One notification stands for all changes of sources, and
    // one for all changes of destinations: each lets the receiver look for all of them anew.
    void tell(unsigned kinds);

private:
    struct Receiver {
        MIDIServices::NotifyProc notify;
        void* refCon;
    };

    std::shared_ptr<const Receiver> m_receiver; // null between end() and begin()
    ChangePace m_pace;
    Alarm m_alarm;
    std::unique_ptr<MainLoop::Watch> m_watch;
};

} // namespace kestrel
