#include "platform/linux/midi/LanesInUse.h"

#include <jack/jack.h>

#include <utility>

namespace kestrel {

template <typename Lane> bool LanesInUse::Lanes<Lane>::add(const std::shared_ptr<Lane>& lane)
{
    const std::size_t index = count.load(std::memory_order_relaxed);
    if (index == lanes.size())
        return false;
    lanes[index] = lane;
    count.store(index + 1, std::memory_order_release);
    return true;
}

template <typename Lane>
template <typename Function>
void LanesInUse::Lanes<Lane>::forEach(Function function) const
{
    const std::size_t end = count.load(std::memory_order_acquire);
    for (std::size_t i = 0; i < end; ++i)
        function(*lanes[i]);
}

template bool LanesInUse::Lanes<SourceLane>::add(const std::shared_ptr<SourceLane>&);
template bool LanesInUse::Lanes<DestinationLane>::add(const std::shared_ptr<DestinationLane>&);

// JACK goes on without a client that is late, and what the sources sent in the missed cycles is
// gone. The first frame of a cycle shows this, because JACK counts the frames of the cycles that it
// ran. Its xrun callback is no sign: it also tells of cycles that came too late for everybody and
// lost nothing.
bool LanesInUse::process(_jack_client* client, std::uint32_t frames)
{
    const jack_nframes_t cycle = jack_last_frame_time(client);
    const bool missedCycles
        = cycle != std::exchange(m_lastCycle, cycle).value_or(cycle - frames) + frames;
    bool isNews = false;
    m_sources.forEach([&](SourceLane& lane) {
        if (lane.isClosed())
            return;
        if (missedCycles)
            lane.markLoss();
        isNews |= lane.receive(client, frames) || missedCycles;
        if (jack_last_frame_time(client) != cycle) { // the source writes the next cycle already
            lane.markLoss();
            isNews = true;
        }
    });
    m_destinations.forEach([frames](DestinationLane& lane) { lane.transmit(frames); });
    return isNews;
}

bool LanesInUse::disconnected(const PortListing& port, const _jack_port* ours)
{
    const auto isMeant = [&](const std::string& name, const _jack_port* own) {
        return name == port.name && (!ours || ours == own);
    };
    bool isSource = false;
    if (port.direction == PortDirection::Input) {
        m_destinations.forEach([&](DestinationLane& lane) {
            if (isMeant(lane.destinationName(), lane.port()))
                lane.disconnected();
        });
    } else {
        m_sources.forEach([&](SourceLane& lane) {
            if (lane.isClosed() || !isMeant(lane.sourceName(), lane.port()))
                return;
            lane.markLoss();
            isSource = true;
        });
    }
    return isSource;
}

} // namespace kestrel
