#pragma once

#include "platform/MIDIServices.h"

#include <cstdint>
#include <optional>

// Gates stand between CoreMIDI's receive thread and the inboxes of input ports. CoreMIDI does not
// promise that a delivery has ended when its port is disposed of, nor that no delivery comes later.
// So a gate outlives its port, and a shut gate lets nothing through.
namespace kestrel::ReadGates {

// Identifies one opening of one gate. A later opening of the same gate has another ticket. A ticket
// fits into the context pointer that CoreMIDI keeps.
using Ticket = std::uintptr_t;

// Receives the packets that a gate lets through. Runs on the receive thread and must not wait.
using Receive = void (*)(MIDIPacketList& packets, void* refCon, void* srcConnRefCon);

// Main thread. No value when all gates are open already.
[[nodiscard]] std::optional<Ticket> open(Receive receive, void* refCon);

// Main thread. When it returns, no delivery is under way, and no later delivery gets through.
void shut(Ticket ticket);

// Receive thread. Passes the packets on, unless the gate is shut.
void deliver(Ticket ticket, MIDIPacketList& packets, void* srcConnRefCon);

} // namespace kestrel::ReadGates
