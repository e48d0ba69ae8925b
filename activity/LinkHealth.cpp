#include "activity/LinkHealth.h"

#include "activity/OutcomeWords.h"
#include "activity/PacketWords.h"

#include <algorithm>
#include <numeric>

namespace kestrel {

using Kind = ActivityEvent::Kind;
using Outcome = ActivityEvent::Outcome;

bool LinkHealth::isGap(Duration interval)
{
    return interval >= BeatPeriod + BeatPeriod / 2.0;
}

void LinkHealth::note(const ActivityEvent& event)
{
    switch (event.kind()) {
    case Kind::Packet:
        return notePacket(event);
    case Kind::LinkOpened:
        ++m_counts.timesBuilt;
        return goOffline(State::Waiting, event.time());
    case Kind::LinkRebuilt:
        return;
    case Kind::NoConsole:
        return goOffline(State::NoConsole, event.time());
    case Kind::NoMIDIService:
        return goOffline(State::NoMIDIService, event.time());
    case Kind::WorkstationMissing:
        m_workstationMissing = true;
        return;
    case Kind::WorkstationFound:
        m_workstationMissing = false;
        return;
    case Kind::ConsoleSilent:
        return goOffline(State::Silent, event.time());
    case Kind::PacketsLost:
        ++m_counts.lossesOfPackets;
        return;
    }
}

void LinkHealth::notePacket(const ActivityEvent& event)
{
    switch (event.outcome()) {
    case Outcome::Answered:
        ++m_counts.answers;
        return noteBeat(event.time());
    case Outcome::NotAnswered:
        return noteBeat(event.time());
    case Outcome::Typed:
        m_permissionMissing = false;
        ++m_counts.typed;
        return;
    case Outcome::NotPermitted:
        m_permissionMissing = true;
        [[fallthrough]];
    default:
        if (OutcomeWords::isKeptBack(event) && PacketWords::isKeyPress(event))
            ++m_counts.keptBack;
    }
}

void LinkHealth::noteBeat(Clock::TimePoint time)
{
    ++m_counts.beats;
    if (m_state != State::Online) {
        m_state = State::Online;
        m_onlineSince = time;
    } else {
        const Duration interval = time - *m_lastBeat;
        m_intervals[m_intervalCount % KeptIntervals] = interval;
        ++m_intervalCount;
        noteTimeSinceBeat(interval);
    }
    m_lastBeat = time;
}

// A beat counts as missed once it is late by half a period.
void LinkHealth::noteTimeSinceBeat(Duration time)
{
    const auto periods = (time + BeatPeriod / 2) / Duration(BeatPeriod);
    m_counts.missedBeats += static_cast<std::uint64_t>(std::max<Duration::rep>(periods - 1, 0));
}

void LinkHealth::goOffline(State state, Clock::TimePoint time)
{
    if (m_state == State::Online)
        noteTimeSinceBeat(time - *m_lastBeat);
    m_state = state;
    m_onlineSince.reset();
}

std::vector<LinkHealth::Duration> LinkHealth::intervals() const
{
    const std::size_t size = std::min<std::uint64_t>(m_intervalCount, KeptIntervals);
    std::vector<Duration> oldestFirst(size);
    for (std::size_t i = 0; i < size; ++i)
        oldestFirst[i] = m_intervals[(m_intervalCount - size + i) % KeptIntervals];
    return oldestFirst;
}

std::optional<LinkHealth::Duration> LinkHealth::jitter() const
{
    auto beats = intervals();
    std::erase_if(beats, isGap);
    if (beats.empty())
        return {};
    const Duration sum = std::accumulate(
        beats.begin(), beats.end(), Duration::zero(), [](Duration total, Duration interval) {
            return total + std::chrono::abs(interval - Duration(BeatPeriod));
        });
    return sum / static_cast<Duration::rep>(beats.size());
}

std::string LinkHealth::complaint() const
{
    if (m_workstationMissing)
        return "Pro Tools is not running. Start it; the console's keys type only into it.";
    switch (m_state) {
    case State::Unknown:
    case State::Waiting:
        return {};
    case State::NoMIDIService:
        return "The MIDI service does not answer. Start it; Kestrel tries again by itself.";
    case State::NoConsole:
        return "No console was found. Check its cable, its power and its driver.";
    case State::Silent:
        return "The console has stopped sending. Check its cable and its power.";
    case State::Online:
        if (m_permissionMissing)
            return "The system does not permit Kestrel to post keys. Give it the permission.";
        return {};
    }
    return {};
}

} // namespace kestrel
