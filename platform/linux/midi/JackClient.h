#pragma once

#include "platform/linux/midi/Changes.h"
#include "platform/linux/midi/DestinationLane.h"
#include "platform/linux/midi/ForeignPorts.h"
#include "platform/linux/midi/SourceLane.h"
#include "platform/linux/midi/Wakeup.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrel {

// One client of the JACK server with its ports. Every call that may wait for the server is made on
// the control thread. The process callback never waits.
class JackClient {
public:
    enum News : unsigned {
        PortsChanged = 1, // a change of the foreign ports is due, or the time of the next one moved
        PacketsLost = 2, // packets from a source may have been lost
        ConnectionsInDoubt = 4, // findCuts() is to be called
        ServerGone = 8
    };

    explicit JackClient(std::shared_ptr<Wakeup> wakeup);

    // The functions from here on run on the control thread. False when there is no server or the
    // server refuses.
    [[nodiscard]] bool open(const std::string& name);
    void close();
    [[nodiscard]] bool reservePort(const std::string& name, PortDirection direction);
    [[nodiscard]] bool connectSource(
        const std::shared_ptr<SourceLane>& lane, const std::string& portName);
    void connectDestination(
        const std::shared_ptr<DestinationLane>& lane, const std::string& portName);
    // Removes all connections of a lane's port. The port itself stays until the client is closed.
    void disconnect(_jack_port* port);
    [[nodiscard]] std::vector<PortListing> listForeignPorts() const;
    // Finds the lanes that a patchbay has disconnected. A cut source is told as lost packets and as
    // the removal of the source. A cut destination is connected again for the next packet.
    void findCuts();

    // The functions from here on may run on any thread. Returns the News bits set since the last
    // call.
    [[nodiscard]] unsigned takeNews() { return m_news.exchange(0); }
    [[nodiscard]] ForeignPorts& foreignPorts() { return m_foreignPorts; }
    [[nodiscard]] bool isAlive() const { return m_alive.load(); }
    // Declares the client dead: jobs that are still queued for it do nothing any more, except
    // close().
    void abandon();

private:
    static constexpr std::size_t MaxLanes = 16; // the most lanes in each direction

    template <typename Lane> struct Lanes {
        bool add(const std::shared_ptr<Lane>& lane);

        std::array<std::shared_ptr<Lane>, MaxLanes> lanes;
        std::atomic<std::size_t> count { 0 }; // only grows while the client is open
    };

    void setCallbacks();
    void setNotificationCallbacks();
    void process(std::uint32_t frames);
    void portRegistered(std::uint32_t identifier);
    void portUnregistered(std::uint32_t identifier);
    void connectionRemoved();
    void graphChanged();
    void suspectCut();
    void announcePorts();
    void announce(unsigned news);
    [[nodiscard]] bool connectEffectively(_jack_port* port, const std::string& otherName);
    [[nodiscard]] bool giveOwnPort(
        const std::shared_ptr<DestinationLane>& lane, const std::string& portName);
    [[nodiscard]] _jack_port* registerPort(const std::string& name, PortDirection direction);
    [[nodiscard]] _jack_port* takePort(const std::string& name, PortDirection direction);

    const std::shared_ptr<Wakeup> m_wakeup;
    std::atomic<_jack_client*> m_handle { nullptr };
    std::atomic<bool> m_alive { false };
    std::atomic<unsigned> m_news { 0 };
    Lanes<SourceLane> m_sources;
    Lanes<DestinationLane> m_destinations;
    std::map<std::string, int> m_registered; // how often each name was requested; control thread
    std::multimap<std::string, _jack_port*> m_reserved; // control thread
    ForeignPorts m_foreignPorts;
    std::atomic<bool> m_isCutSuspected { false };
    // A connection was removed, and the graph is to change.
    std::atomic<bool> m_awaitsGraph { false };
    Changes m_graph; // told when connections change or the client dies
    std::optional<std::uint32_t> m_lastCycle; // its first frame; used by the process callback only
};

} // namespace kestrel
