#pragma once

#include <cstdint>
#include <string_view>

namespace kestrel {

// What happens to the link, apart from the packets.
enum class LinkEvent : std::uint8_t {
    Opened, // a console's source is connected; the detail names its device and port
    Rebuilt, // the link is about to be built again; the detail says why
    NoConsole, // the link was built, and no console was there
    NoMIDIService, // the MIDI service refuses the link
    WorkstationMissing, // each check while the workstation does not run
    WorkstationRuns, // each check while it runs
    // Each check of a connected console without a heartbeat for more than five seconds
    ConsoleSilent,
    PacketsLost // packets from the console may have been lost
};

// Learns what happens to the link. Main thread only.
class LinkListener {
public:
    virtual ~LinkListener() = default;

    // `detail` is in UTF-8 and valid during the call.
    virtual void linkChanged(LinkEvent event, std::string_view detail) = 0;
};

} // namespace kestrel
