#pragma once

#include "activity/ActivityEvent.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kestrel {

// How well the link works, from all events since the start or the last reset. Main thread only.
class LinkHealth {
public:
    using Duration = Clock::TimePoint::duration;

    enum class State : std::uint8_t {
        Unknown,
        NoMIDIService,
        NoConsole,
        Waiting, // for the first heartbeat
        Online,
        Silent
    };
    struct Counts {
        std::uint64_t beats = 0;
        std::uint64_t missedBeats = 0; // while online
        std::uint64_t answers = 0;
        std::uint64_t timesBuilt = 0;
        std::uint64_t typed = 0; // key presses
        std::uint64_t keptBack = 0; // key presses
        std::uint64_t lossesOfPackets = 0;
    };

    static constexpr std::chrono::seconds BeatPeriod { 1 };
    static constexpr std::size_t KeptIntervals = 300; // five minutes

    // Takes a few tens of nanoseconds and allocates nothing.
    void note(const ActivityEvent& event);
    // Whether the system permits the program to post keys.
    void notePermission(bool granted) { m_permissionMissing = !granted; }

    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] bool isWorkstationMissing() const { return m_workstationMissing; }
    [[nodiscard]] bool isPermissionMissing() const { return m_permissionMissing; }
    [[nodiscard]] const Counts& counts() const { return m_counts; }
    // No value while the console is not online.
    [[nodiscard]] std::optional<Clock::TimePoint> onlineSince() const { return m_onlineSince; }
    // The times between the last beats, oldest first.
    [[nodiscard]] std::vector<Duration> intervals() const;
    // True for an interval in which at least one beat is missing.
    [[nodiscard]] static bool isGap(Duration interval);
    // How far the last intervals without the gaps are from one second on average; no value without
    // an interval.
    [[nodiscard]] std::optional<Duration> jitter() const;
    // Says in one sentence what is wrong now and what to do, in UTF-8. Empty when nothing is.
    [[nodiscard]] std::string complaint() const;

private:
    void notePacket(const ActivityEvent& event);
    void noteBeat(Clock::TimePoint time);
    void noteTimeSinceBeat(Duration time);
    void goOffline(State state, Clock::TimePoint time);

    State m_state = State::Unknown;
    bool m_workstationMissing = false;
    bool m_permissionMissing = false;
    Counts m_counts;
    std::optional<Clock::TimePoint> m_onlineSince;
    std::optional<Clock::TimePoint> m_lastBeat;
    std::array<Duration, KeptIntervals> m_intervals {};
    std::uint64_t m_intervalCount = 0; // ever
};

} // namespace kestrel
