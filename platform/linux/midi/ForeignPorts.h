#pragma once

#include "platform/linux/midi/PortChanges.h"
#include "platform/linux/midi/PortPairing.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

struct _jack_client;
struct _jack_port;

namespace kestrel {

// The MIDI ports of other JACK clients, and their changes. Clients of our own kind do not count:
// two of them would take each other for a device, and each connection of one would be news for the
// other.
class ForeignPorts {
public:
    using TimePoint = PortChanges::TimePoint;

    // Called before JACK's notifications begin. `askedName` is the name that clients of our own
    // kind ask for.
    void bind(_jack_client* client, std::string askedName);

    // Control thread. learn() records the ports that are there already.
    void learn();
    [[nodiscard]] std::vector<PortListing> list() const;
    // The receiver relies on a connection with this port from now on.
    void want(const PortListing& port);

    // JACK's notification thread; the control thread finds cuts too.
    void registered(std::uint32_t identifier);
    // Returns the port, unless it was none of these.
    std::optional<PortListing> unregistered(std::uint32_t identifier);
    // The connection with `port` has been cut.
    void cut(const PortListing& port);
    [[nodiscard]] bool isWanted(const PortListing& port) const;
    // True when a change is due earlier than the main thread knows.
    [[nodiscard]] bool hasNews();

    // Main thread. When the next change is due; TimePoint::max() when there is none. The main
    // thread knows it from now on, so only an earlier one is news.
    [[nodiscard]] TimePoint tellDue();
    // Main thread. Returns the PortChanges::Kinds that are due.
    [[nodiscard]] unsigned takeChanges(TimePoint now);

private:
    [[nodiscard]] std::optional<PortListing> listing(const _jack_port* port) const;

    _jack_client* m_client = nullptr;
    std::string m_askedName;
    mutable std::mutex m_mutex; // guards the members below
    // JACK passes only the port when a port is unregistered, so its name must be known before.
    std::map<const _jack_port*, PortListing> m_known;
    PortChanges m_changes;
    TimePoint m_toldDue = TimePoint::max();
};

} // namespace kestrel
