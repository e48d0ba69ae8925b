#pragma once

#include "platform/linux/midi/DestinationLane.h"
#include "platform/linux/midi/PortPairing.h"
#include "platform/linux/midi/SourceLane.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

struct _jack_client;
struct _jack_port;

namespace kestrel {

// The lanes of one JACK client, and the part of its process callback that moves their packets.
class LanesInUse {
public:
    // Control thread. False when there are too many.
    [[nodiscard]] bool add(const std::shared_ptr<SourceLane>& lane) { return m_sources.add(lane); }
    [[nodiscard]] bool add(const std::shared_ptr<DestinationLane>& lane)
    {
        return m_destinations.add(lane);
    }

    // Process callback. Moves the packets of this cycle. True when the main thread has something to
    // deliver.
    [[nodiscard]] bool process(_jack_client* client, std::uint32_t frames);

    // JACK's notification thread: `port`, of another client, is no longer connected with our port
    // `ours`, or with none if `ours` is null. True when a lane carried packets from it.
    [[nodiscard]] bool disconnected(const PortListing& port, const _jack_port* ours = nullptr);

private:
    static constexpr std::size_t MaxLanes = 16; // the most lanes in each direction

    template <typename Lane> struct Lanes {
        [[nodiscard]] bool add(const std::shared_ptr<Lane>& lane);
        template <typename Function> void forEach(Function function) const;

        std::array<std::shared_ptr<Lane>, MaxLanes> lanes;
        std::atomic<std::size_t> count { 0 }; // only grows while the client is open
    };

    Lanes<SourceLane> m_sources;
    Lanes<DestinationLane> m_destinations;
    std::optional<std::uint32_t> m_lastCycle; // its first frame; used by the process callback only
};

} // namespace kestrel
