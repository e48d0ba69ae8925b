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

    // JACK's notification thread. The functions with a result return no value for a port of our
    // own kind and for one that carries no MIDI.
    void registered(std::uint32_t identifier);
    std::optional<PortListing> unregistered(std::uint32_t identifier);
    [[nodiscard]] std::optional<PortListing> known(std::uint32_t identifier) const;
    // True when a change is due earlier than the time that tellDue() returned last.
    [[nodiscard]] bool hasNews();

    // Any thread. What the functions of the same names of PortChanges do.
    void cut(const PortListing& port);
    void want(const PortListing& port);
    void know(const std::string& client);
    void tryAgain();

    // Main thread. When the next changes are due. The main thread knows it from now on, so only an
    // earlier one is news.
    [[nodiscard]] PortChanges::Due tellDue();
    // Main thread. Returns the PortChanges::Kinds of all changes.
    [[nodiscard]] unsigned takeChanges();

private:
    [[nodiscard]] std::optional<PortListing> listing(const _jack_port* port) const;

    _jack_client* m_client = nullptr;
    std::string m_askedName;
    mutable std::mutex m_mutex; // guards the members below
    // JACK passes only the port when a port is unregistered, so its name must be known before.
    std::map<const _jack_port*, PortListing> m_known;
    PortChanges m_changes;
    PortChanges::Due m_toldDue;
};

} // namespace kestrel
