#pragma once

#include "platform/MIDIServices.h"

#include <cstdint>
#include <optional>

// Stand between CoreMIDI's receive thread and the inboxes of input ports. CoreMIDI does not say
// that a delivery under way is over once a port is disposed of, nor that none comes by later. A
// gate therefore outlives its port, and lets nothing through once it is shut.
namespace kestrel::ReadGates {

// Names one opening of one gate, never another. It fits into the pointer that CoreMIDI keeps.
using Ticket = std::uintptr_t;

// What a gate lets through to: on the receive thread; must not wait.
using Receive = void (*)(MIDIPacketList& packets, void* refCon, void* srcConnRefCon);

// Missing when as many gates are open as there are. Main thread.
[[nodiscard]] std::optional<Ticket> open(Receive receive, void* refCon);

// When it has returned, nothing is inside and nothing gets through any more. Main thread.
void shut(Ticket ticket);

// Passes the packets on, unless the gate was shut. Receive thread.
void deliver(Ticket ticket, MIDIPacketList& packets, void* srcConnRefCon);

} // namespace kestrel::ReadGates
