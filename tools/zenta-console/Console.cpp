#include "tools/zenta-console/Console.h"

#include "tools/zenta-console/ScriptFile.h"

#include <sys/select.h>

#include <algorithm>
#include <iostream>

namespace kestrel::console {

namespace {
constexpr auto BeatPeriod = std::chrono::seconds(1);
constexpr auto LookForListener = std::chrono::milliseconds(10);
} // namespace

Console::Console(
    ConsolePorts& ports, int scriptDescriptor, int stopDescriptor, const Options& options)
    : m_ports(ports)
    , m_script(scriptDescriptor)
    , m_stopDescriptor(stopDescriptor)
    , m_options(options)
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
        checkExpectations();
    }
    return *m_exitCode;
}

std::optional<Console::Clock::duration> Console::timeout() const
{
    std::optional<Clock::time_point> next;
    for (const auto& moment : { m_nextBeat, m_waitUntil, m_answerUntil, m_listenerUntil }) {
        if (moment && (!next || *moment < *next))
            next = moment;
    }
    if (m_listenerUntil)
        next = std::min(*next, Clock::now() + LookForListener);
    if (!next)
        return {};
    return std::max(*next - Clock::now(), Clock::duration::zero());
}

void Console::waitForSomething()
{
    const int script = m_script.isAtEnd() ? -1 : m_script.descriptor();
    fd_set readable;
    FD_ZERO(&readable);
    int last = -1;
    for (const int descriptor : { m_ports.descriptor(), m_stopDescriptor, script }) {
        if (descriptor >= 0)
            FD_SET(descriptor, &readable);
        last = std::max(last, descriptor);
    }
    timespec time {};
    const auto left = timeout();
    if (left) {
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(*left);
        time.tv_sec = seconds.count();
        time.tv_nsec = std::chrono::nanoseconds(*left - seconds).count();
    }
    // Unlike poll(), it waits for times below a millisecond, and unlike ppoll(), every system has
    // it.
    if (::pselect(last + 1, &readable, nullptr, nullptr, left ? &time : nullptr, nullptr) <= 0)
        return;
    if (FD_ISSET(m_ports.descriptor(), &readable))
        m_ports.lower();
    if (FD_ISSET(m_stopDescriptor, &readable))
        m_exitCode = Done;
    if (script >= 0 && FD_ISSET(script, &readable))
        readScript();
    if (m_ports.isServerGone())
        fail(ServerGone, "the " + std::string(serverName()) + " has gone");
}

void Console::readScript()
{
    m_script.readMore();
    if (m_script.error())
        fail(BadCommand, unreadableText(m_script.error()));
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
        fail(ExpectationFailed, "a packet cannot be sent");
}

void Console::reportArrivals()
{
    for (const ConsolePorts::Arrival& arrival : m_ports.takeArrivals()) {
        const bool isTraffic = arrival.pair == m_ports.trafficPair();
        std::cout << (isTraffic ? "answer " : "stray midi_" + std::to_string(arrival.pair) + " ")
                  << hexText(arrival.packet) << " at " << arrival.monotonicUs << std::endl;
        if (isTraffic && arrival.packet == heartbeatAnswer())
            expectationMet(m_answerUntil);
    }
}

void Console::expectationMet(std::optional<Clock::time_point>& until)
{
    if (until)
        m_begin = Clock::now();
    until.reset();
}

void Console::checkExpectations()
{
    if (m_listenerUntil && m_ports.hasListener())
        expectationMet(m_listenerUntil);
    const auto failIfLate = [this](const auto& until, const std::string& reason) {
        if (until && Clock::now() >= *until && !m_exitCode)
            fail(ExpectationFailed,
                "line " + std::to_string(m_lineNumber) + ": " + m_line + ": " + reason);
    };
    failIfLate(m_answerUntil, "no answer " + hexText(heartbeatAnswer()) + " came in time");
    failIfLate(m_listenerUntil, "no client was connected in time");
}

void Console::fail(ExitCode code, const std::string& reason)
{
    std::cerr << "zenta-console: " << reason << std::endl;
    m_exitCode = code;
}

} // namespace kestrel::console
