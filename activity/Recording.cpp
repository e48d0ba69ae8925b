#include "activity/Recording.h"

#include "activity/EventTime.h"
#include "activity/OutcomeWords.h"
#include "activity/PacketWords.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace kestrel {

namespace {
std::string story(const ActivityEvent& event)
{
    const std::string outcome = OutcomeWords::describe(event);
    return PacketWords::describe(event) + (outcome.empty() ? "" : " → ") + outcome;
}

// Tenths of a millisecond: a packet of the console takes longer on its way.
std::string secondsText(Clock::TimePoint::duration time)
{
    const auto seconds = std::chrono::duration<double>(time).count();
    std::array<char, 32> text {};
    std::snprintf(text.data(), text.size(), "%.4f", seconds);
    return text.data();
}

bool isWhole(const ActivityEvent& event)
{
    return event.packetSize() == event.bytes().size();
}

// An empty packet has no bytes to send.
std::string command(const ActivityEvent& event, Clock::TimePoint start)
{
    if (event.kind() != ActivityEvent::Kind::Packet || event.bytes().empty())
        return {};
    const std::string bytes = PacketWords::hexadecimal(event);
    if (!isWhole(event))
        return "# not kept whole, " + std::to_string(event.packetSize()) + " bytes: " + bytes
            + "\n";
    return "at " + secondsText(event.time() - start) + " send " + bytes + "\n";
}
} // namespace

std::string Recording::script(const ActivityLog& log)
{
    std::string text = head();
    if (log.first() == log.count())
        return text;
    const ActivityEvent& first = log.event(log.first());
    text += day(first);
    for (auto number = log.first(); number < log.count(); ++number)
        text += entry(log.event(number), first.time());
    return text;
}

std::string Recording::head()
{
    return "# What the console sent, recorded by ZENTA Kestrel.\n"
           "# zenta-console plays it back; the arrows say what became of it then.\n"
           "heartbeat off\n"
           "expect listener 60000\n";
}

std::string Recording::day(const ActivityEvent& first)
{
    return "\n# " + EventTime::date(first.wallTime()) + "\n";
}

std::string Recording::entry(const ActivityEvent& event, Clock::TimePoint start)
{
    return "# " + EventTime::milliseconds(event.wallTime()) + "  " + story(event) + "\n"
        + command(event, start);
}

std::string Recording::line(const ActivityEvent& event)
{
    std::string text = EventTime::milliseconds(event.wallTime()) + "  " + story(event);
    if (event.kind() == ActivityEvent::Kind::Packet)
        text += "  [" + PacketWords::hexadecimal(event) + "]";
    return text;
}

} // namespace kestrel
