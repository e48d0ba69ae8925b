#pragma once

#include "activity/ActivityLog.h"

#include <string>

// Writes what was recorded as a script for zenta-console, which can play it back.
namespace kestrel::Recording {

// Each packet from the console is sent at its time, counted from the first event. Comments say what
// it was, what became of it and what happened to the link. A packet of which only the beginning was
// kept is a comment too.
[[nodiscard]] std::string script(const ActivityLog& log);

// The same piece by piece, for a recording that goes on: the head, then the day of the first event,
// then each event.
[[nodiscard]] std::string head();
[[nodiscard]] std::string day(const ActivityEvent& first);
[[nodiscard]] std::string entry(const ActivityEvent& event, Clock::TimePoint start);

// An event in one line for people.
[[nodiscard]] std::string line(const ActivityEvent& event);

} // namespace kestrel::Recording
