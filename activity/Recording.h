#pragma once

#include "activity/ActivityLog.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace kestrel {

// Writes events as a script for zenta-console, which can play it back. Each packet from the console
// is sent at its time, counted from the first packet. Comments say what it was, what became of it
// and what happened to the link. A packet of which only the beginning was kept is a comment too.
class Recording {
public:
    // Longer pauses between two packets are shortened to this, and a comment says so: nobody wants
    // to wait for a night to pass. After some seconds without a packet nothing changes any more.
    static constexpr std::chrono::minutes LongestPause { 1 };

    // All that the log holds from this event on.
    [[nodiscard]] static std::string script(const ActivityLog& log, std::uint64_t from = 0);

    // The same piece by piece, for a recording that goes on: the head, then each event. A day is
    // named before its first event.
    [[nodiscard]] static std::string head();
    [[nodiscard]] std::string entry(const ActivityEvent& event);

    // An event in one line for people.
    [[nodiscard]] static std::string line(const ActivityEvent& event);

private:
    [[nodiscard]] std::string day(const ActivityEvent& event);
    [[nodiscard]] std::string command(const ActivityEvent& event);
    [[nodiscard]] std::string pause(const ActivityEvent& event);

    std::string m_day;
    std::optional<Clock::TimePoint> m_lastSent; // as it happened
    Clock::TimePoint::duration m_scriptTime {}; // of the last packet
};

} // namespace kestrel
