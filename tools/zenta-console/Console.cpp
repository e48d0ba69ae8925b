#include "tools/zenta-console/Console.h"

#include "tools/zenta-console/EditingScene.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <variant>

namespace kestrel::console {

namespace {
constexpr auto BeatPeriod = std::chrono::seconds(1);
} // namespace

Console::Console(ConsolePorts& ports, int scriptDescriptor, int stopDescriptor)
    : m_ports(ports)
    , m_script(scriptDescriptor)
    , m_stopDescriptor(stopDescriptor)
    , m_nextBeat(Clock::now())
{
}

ExitCode Console::run()
{
    while (!m_exitCode) {
        beat();
        followScript();
        if (m_isQuitting && m_ports.isAllSent())
            m_exitCode = Done;
        if (m_exitCode)
            break;
        waitForSomething();
        reportArrivals();
        checkExpectation();
    }
    return *m_exitCode;
}

int Console::timeoutMs() const
{
    std::optional<Clock::time_point> next;
    for (const auto& moment : { m_nextBeat, m_waitUntil, m_answerUntil }) {
        if (moment && (!next || *moment < *next))
            next = moment;
    }
    if (!next)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now()).count();
    return static_cast<int>(std::max<std::int64_t>(left, 0));
}

void Console::waitForSomething()
{
    const int script = m_script.isAtEnd() ? -1 : m_script.descriptor();
    std::array<pollfd, 3> watched { { { m_ports.descriptor(), POLLIN, 0 },
        { m_stopDescriptor, POLLIN, 0 }, { script, POLLIN, 0 } } };
    if (::poll(watched.data(), watched.size(), timeoutMs()) <= 0)
        return;
    if (watched[0].revents != 0)
        m_ports.lower();
    if (watched[1].revents != 0)
        m_exitCode = Done;
    if (watched[2].revents != 0)
        m_script.readMore();
    if (m_ports.isServerGone())
        fail(ServerGone, "the JACK server has gone");
}

void Console::beat()
{
    const auto now = Clock::now();
    if (!m_nextBeat || now < *m_nextBeat)
        return;
    send(heartbeat());
    // The next beat stays in step with the first one. Beats that were missed during a long sleep
    // are not sent later.
    while (*m_nextBeat <= now)
        *m_nextBeat += BeatPeriod;
}

void Console::send(const Bytes& packet)
{
    if (!m_ports.send(packet))
        fail(ExpectationFailed, "too much waits to be sent");
}

void Console::reportArrivals()
{
    for (const ConsolePorts::Arrival& arrival : m_ports.takeArrivals()) {
        const bool isTraffic = arrival.pair == m_ports.trafficPair();
        std::cout << (isTraffic ? "answer " : "stray midi_" + std::to_string(arrival.pair) + " ")
                  << hexText(arrival.packet) << " at " << arrival.monotonicUs << std::endl;
        if (isTraffic && arrival.packet == heartbeatAnswer())
            m_answerUntil.reset();
    }
}

void Console::checkExpectation()
{
    if (m_answerUntil && Clock::now() >= *m_answerUntil && !m_exitCode)
        fail(ExpectationFailed,
            "line " + std::to_string(m_lineNumber) + ": " + m_line + ": no answer "
                + hexText(heartbeatAnswer()) + " came in time");
}

void Console::followScript()
{
    if (m_waitUntil && Clock::now() >= *m_waitUntil)
        m_waitUntil.reset();
    while (!m_exitCode && !m_isQuitting && !m_waitUntil && !m_answerUntil) {
        if (!m_scene.empty()) {
            playScene();
            continue;
        }
        const auto line = m_script.next();
        if (!line)
            return;
        ++m_lineNumber;
        obey(*line);
    }
}

void Console::playScene()
{
    const Command command = m_scene.front();
    m_scene.pop_front();
    std::visit([this](const auto& each) { obey(each); }, command);
    if (m_scene.empty())
        std::cout << "shown" << std::endl;
}

void Console::obey(const std::string& line)
{
    m_line = line;
    std::visit([this](const auto& command) { obey(command); }, parseCommand(line));
}

void Console::obey(const Send& command)
{
    for (const Bytes& packet : command.packets) {
        send(packet);
        std::cout << "sent " << hexText(packet) << std::endl;
    }
}

void Console::obey(const SwitchHeartbeat& command)
{
    if (command.on != m_nextBeat.has_value())
        m_nextBeat = command.on ? std::optional(Clock::now()) : std::nullopt;
    beat();
}

void Console::obey(const Wait& command)
{
    m_waitUntil = Clock::now() + command.duration;
}

void Console::obey(const ExpectAnswer& command)
{
    reportArrivals(); // answers that came before do not count
    m_answerUntil = Clock::now() + command.within;
}

void Console::obey(const Show&)
{
    const auto scene = editingScene();
    m_scene.assign(scene.begin(), scene.end());
}

void Console::obey(const Quit&)
{
    m_isQuitting = true;
    m_nextBeat.reset();
}

void Console::obey(const Malformed& command)
{
    fail(
        BadCommand, "line " + std::to_string(m_lineNumber) + ": " + m_line + ": " + command.reason);
}

void Console::fail(ExitCode code, const std::string& reason)
{
    std::cerr << "zenta-console: " << reason << std::endl;
    m_exitCode = code;
}

} // namespace kestrel::console
