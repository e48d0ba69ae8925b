#include "bench/soak/EventStream.h"

#include <chrono>
#include <exception>
#include <string>

namespace kestrel::bench {

namespace {
using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds Beat { 20 }; // events are sent in small bunches
constexpr int Zones = 10;
constexpr int Knobs = 4;
constexpr int Lamps = 8;
constexpr int Buttons = 12;

// The commands of the console, in turn: of ten events four are texts, three knobs, one a lamp, and
// two the press and the release of a button.
std::string command(long number)
{
    const long turn = number / 10;
    const auto text = [](long value) { return std::to_string(value); };
    switch (number % 10) {
    case 0:
        return "press " + text(turn % Buttons + 1);
    case 5:
        return "release " + text(turn % Buttons + 1);
    case 1:
        return "lamp " + text(turn % Lamps) + (turn / Lamps % 2 == 0 ? " on" : " off");
    case 2:
    case 4:
    case 8:
        return "knob " + text(number % Knobs + 1) + " " + text(turn % 128);
    default:
        return "display " + text(number % Zones) + " " + text(turn % 10'000'000);
    }
}
} // namespace

EventStream::EventStream(
    stage::ChildProcess& console, stage::ChildProcess& workstation, int eventsPerSecond)
    : m_console(console)
    , m_workstation(workstation)
    , m_eventsPerSecond(eventsPerSecond)
    , m_thread([this](const std::stop_token& stop) { run(stop); })
{
}

EventStream::~EventStream() = default;

void EventStream::run(const std::stop_token& stop)
{
    const auto start = Clock::now();
    try {
        while (!stop.stop_requested()) {
            const std::chrono::duration<double> passed = Clock::now() - start;
            const auto owed = static_cast<long>(passed.count() * m_eventsPerSecond);
            std::string bunch;
            long last = m_sent;
            for (; last < owed; ++last)
                bunch += command(last) + '\n';
            if (!bunch.empty()) {
                bunch.pop_back();
                m_console.writeLine(bunch);
            }
            m_sent = last;
            takeIn();
            std::this_thread::sleep_for(Beat);
        }
    } catch (const std::exception&) {
        m_hasFailed = true;
    }
}

void EventStream::takeIn()
{
    for (const std::string& line : m_console.linesUntilQuiet(stage::milliseconds(0)))
        m_answers += line.starts_with("answer ") ? 1 : 0;
    for (const std::string& line : m_workstation.linesUntilQuiet(stage::milliseconds(0)))
        m_keys += line.starts_with("down ") || line.starts_with("up ") ? 1 : 0;
}

} // namespace kestrel::bench
