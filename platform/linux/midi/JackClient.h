#pragma once

#include "platform/linux/midi/Changes.h"
#include "platform/linux/midi/ForeignPorts.h"
#include "platform/linux/midi/JackCallbacks.h"
#include "platform/linux/midi/LanesInUse.h"
#include "platform/linux/midi/OwnPorts.h"
#include "platform/linux/midi/Wakeup.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace kestrel {

// One client of the JACK server with its ports. Every call that may wait for the server is made on
// the control thread. The process callback never waits.
class JackClient final : private JackCallbacks {
public:
    enum News : unsigned {
        PortsChanged = 1, // a change of the foreign ports is due, or the time of the next one moved
        ServerGone = 2
    };

    // `connectionTimeout` is how long an attempt to connect waits until packets pass.
    JackClient(std::shared_ptr<Wakeup> wakeup, std::chrono::milliseconds connectionTimeout);

    // The functions from here on run on the control thread. False when there is no server or the
    // server refuses.
    [[nodiscard]] bool open(const std::string& name);
    void close();
    [[nodiscard]] bool reservePort(const std::string& name, PortDirection direction);
    // False also after the timeout. The source is then told as added, for another attempt.
    [[nodiscard]] bool connectSource(
        const std::shared_ptr<SourceLane>& lane, const std::string& portName);
    void connectDestination(
        const std::shared_ptr<DestinationLane>& lane, const std::string& portName);
    // Removes all connections of a lane's port. The port itself stays until the client is closed.
    void disconnect(_jack_port* port);
    [[nodiscard]] std::vector<PortListing> listForeignPorts() const;

    // The functions from here on may run on any thread. Returns the News bits set since the last
    // call.
    [[nodiscard]] unsigned takeNews() { return m_news.exchange(0); }
    [[nodiscard]] ForeignPorts& foreignPorts() { return m_foreignPorts; }
    [[nodiscard]] bool isAlive() const { return m_alive.load(); }
    // Declares the client dead: jobs that are still queued for it do nothing any more, except
    // close().
    void abandon();

private:
    enum class Attempt { Connected, Refused, TooLate };

    void process(std::uint32_t frames) override;
    void portRegistered(std::uint32_t identifier) override;
    void portUnregistered(std::uint32_t identifier) override;
    void connectionRemoved(std::uint32_t one, std::uint32_t other) override;
    void graphChanged() override;
    void shutDown() override;
    void noteCut(std::uint32_t foreign, std::uint32_t ours);
    void announcePorts();
    void announce(unsigned news);
    [[nodiscard]] Attempt connectEffectively(_jack_port* port, const std::string& otherName);
    [[nodiscard]] bool giveOwnPort(
        const std::shared_ptr<DestinationLane>& lane, const std::string& portName);

    const std::shared_ptr<Wakeup> m_wakeup;
    const std::chrono::milliseconds m_connectionTimeout;
    std::atomic<_jack_client*> m_handle { nullptr };
    std::atomic<bool> m_alive { false };
    std::atomic<unsigned> m_news { 0 };
    LanesInUse m_lanes;
    OwnPorts m_ownPorts;
    ForeignPorts m_foreignPorts;
    Changes m_graph; // told when connections change or the client dies
};

} // namespace kestrel
