// The part of the console that follows its script.

#include "tools/zenta-console/Console.h"
#include "tools/zenta-console/EditingScene.h"
#include "tools/zenta-console/ScriptFile.h"

#include <iostream>
#include <utility>
#include <variant>

namespace kestrel::console {

namespace {
constexpr auto ShortestPass = std::chrono::milliseconds(1); // of a script that is repeated
} // namespace

void Console::followScript()
{
    if (!m_begin)
        m_begin = Clock::now();
    if (m_waitUntil && Clock::now() >= *m_waitUntil)
        m_waitUntil.reset();
    while (!m_exitCode && !m_isQuitting && !m_waitUntil && !m_answerUntil && !m_listenerUntil) {
        if (!m_scene.empty()) {
            playScene();
            continue;
        }
        const auto line = nextLine();
        if (!line)
            return;
        obey(*line);
    }
}

std::optional<std::string> Console::nextLine()
{
    if (m_timedCommand)
        return std::exchange(m_timedCommand, std::nullopt);
    auto line = m_script.next();
    if (line)
        ++m_lineNumber;
    else if (m_script.isAtEnd() && m_options.loops)
        beginAgain();
    return line;
}

void Console::beginAgain()
{
    m_script.rewind();
    m_lineNumber = 0;
    m_waitUntil = Clock::now() + ShortestPass;
    m_begin = m_waitUntil;
}

Console::Clock::duration Console::atSpeed(std::chrono::microseconds time) const
{
    return std::chrono::duration_cast<Clock::duration>(time / m_options.speed);
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
    m_waitUntil = Clock::now() + atSpeed(command.duration);
}

// A moment that has passed comes at once.
void Console::obey(const At& command)
{
    m_waitUntil = *m_begin + atSpeed(command.time);
    m_timedCommand = command.command;
    if (*m_waitUntil <= Clock::now())
        m_waitUntil.reset();
}

void Console::obey(const ExpectAnswer& command)
{
    reportArrivals(); // answers that came before do not count
    m_answerUntil = Clock::now() + command.within;
}

void Console::obey(const ExpectListener& command)
{
    m_listenerUntil = Clock::now() + command.within;
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
    fail(BadCommand, faultText(m_lineNumber, command.column, m_line, command.reason));
}

} // namespace kestrel::console
