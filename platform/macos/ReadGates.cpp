#include "platform/macos/ReadGates.h"

#include <os/lock.h>

#include <array>
#include <cstddef>
#include <mutex>

namespace kestrel::ReadGates {

namespace {
// os_unfair_lock lends the priority of a waiting thread to the thread that holds the lock. So the
// receive thread waits only for the few instructions that the main thread runs with the lock held.
class GateLock {
public:
    void lock() { os_unfair_lock_lock(&m_lock); }
    void unlock() { os_unfair_lock_unlock(&m_lock); }

private:
    os_unfair_lock m_lock = OS_UNFAIR_LOCK_INIT;
};

struct Gate {
    GateLock lock; // held during a delivery
    std::uintptr_t openings = 0;
    Receive receive = nullptr; // null while shut
    void* refCon = nullptr;
};

// The gates are never destroyed, because the receive thread may still be running when the process
// ends.
constexpr std::size_t Count = 64;
constinit std::array<Gate, Count> gates;

Gate& gateOf(Ticket ticket)
{
    return gates[ticket % Count];
}
bool isOpenFor(const Gate& gate, Ticket ticket)
{
    return gate.receive && gate.openings == ticket / Count;
}
} // namespace

std::optional<Ticket> open(Receive receive, void* refCon)
{
    for (std::size_t index = 0; index < Count; ++index) {
        Gate& gate = gates[index];
        const std::scoped_lock inside(gate.lock);
        if (gate.receive)
            continue;
        ++gate.openings;
        gate.receive = receive;
        gate.refCon = refCon;
        return gate.openings * Count + index;
    }
    return std::nullopt;
}

void shut(Ticket ticket)
{
    Gate& gate = gateOf(ticket);
    const std::scoped_lock inside(gate.lock);
    if (isOpenFor(gate, ticket))
        gate.receive = nullptr;
}

void deliver(Ticket ticket, MIDIPacketList& packets, void* srcConnRefCon)
{
    Gate& gate = gateOf(ticket);
    const std::scoped_lock inside(gate.lock);
    if (isOpenFor(gate, ticket))
        gate.receive(packets, gate.refCon, srcConnRefCon);
}

} // namespace kestrel::ReadGates
