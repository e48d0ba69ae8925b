#include "activity/Recording.h"

#include "activity/EventTime.h"
#include "activity/OutcomeWords.h"
#include "activity/PacketWords.h"

#include <algorithm>
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

// In hours and minutes.
std::string longTimeText(Clock::TimePoint::duration time)
{
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(time).count();
    const std::string hours = minutes < 60 ? "" : std::to_string(minutes / 60) + " h ";
    return hours + std::to_string(minutes % 60) + " min";
}
} // namespace

std::string Recording::script(const ActivityLog& log, std::uint64_t from)
{
    std::string text = head();
    Recording recording;
    for (auto number = std::max(from, log.first()); number < log.count(); ++number)
        text += recording.entry(log.event(number));
    return text;
}

std::string Recording::head()
{
    return "# What the console sent, recorded by ZENTA Kestrel.\n"
           "# zenta-console plays it back; the arrows say what became of it then.\n"
           "heartbeat off\n"
           "expect listener 60000\n";
}

std::string Recording::entry(const ActivityEvent& event)
{
    std::string text = day(event);
    text += "# " + EventTime::milliseconds(event.wallTime()) + "  " + story(event) + "\n";
    return text + command(event);
}

std::string Recording::day(const ActivityEvent& event)
{
    std::string day = EventTime::date(event.wallTime());
    if (day == m_day)
        return {};
    m_day = std::move(day);
    return "\n# " + m_day + "\n";
}

// An empty packet has no bytes to send.
std::string Recording::command(const ActivityEvent& event)
{
    if (event.kind() != ActivityEvent::Kind::Packet || event.bytes().empty())
        return {};
    const std::string bytes = PacketWords::hexadecimal(event);
    if (!isWhole(event))
        return "# not kept whole, " + std::to_string(event.packetSize()) + " bytes: " + bytes
            + "\n";
    std::string text = pause(event);
    return text + "at " + secondsText(m_scriptTime) + " send " + bytes + "\n";
}

// Advances the time of the script by the pause before the event. Returns a comment if the pause was
// shortened, else an empty text.
std::string Recording::pause(const ActivityEvent& event)
{
    const auto pause = event.time() - m_lastSent.value_or(event.time());
    m_lastSent = event.time();
    if (pause <= LongestPause) {
        m_scriptTime += pause;
        return {};
    }
    m_scriptTime += LongestPause;
    return "# no packet for " + longTimeText(pause) + ", shortened to " + longTimeText(LongestPause)
        + "\n";
}

std::string Recording::line(const ActivityEvent& event)
{
    std::string text = EventTime::milliseconds(event.wallTime()) + "  " + story(event);
    if (event.kind() == ActivityEvent::Kind::Packet)
        text += "  [" + PacketWords::hexadecimal(event) + "]";
    return text;
}

} // namespace kestrel
