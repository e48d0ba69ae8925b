#pragma once

#include "tools/zenta-console/ConsoleCommand.h"
#include "tools/zenta-console/ConsolePorts.h"
#include "tools/zenta-console/LineReader.h"

#include <chrono>
#include <deque>
#include <optional>
#include <string>

namespace kestrel::console {

enum ExitCode : int { Done = 0, ExpectationFailed = 1, BadCommand = 2, ServerGone = 3 };

// Sends heartbeats, carries out its script and prints what arrives, until the script, a signal or
// the end of the JACK server ends it.
class Console {
public:
    // `stopDescriptor` becomes readable when the program is to end.
    Console(ConsolePorts& ports, int scriptDescriptor, int stopDescriptor);

    [[nodiscard]] ExitCode run();

private:
    using Clock = std::chrono::steady_clock;

    void waitForSomething();
    [[nodiscard]] int timeoutMs() const;
    void beat();
    void reportArrivals();
    void followScript();
    void playScene();
    void obey(const std::string& line);
    void obey(const Nothing&) { }
    void obey(const Send& command);
    void obey(const SwitchHeartbeat& command);
    void obey(const Wait& command);
    void obey(const ExpectAnswer& command);
    void obey(const Show&);
    void obey(const Quit&);
    void obey(const Malformed& command);
    void checkExpectation();
    void send(const Bytes& packet);
    void fail(ExitCode code, const std::string& reason);

    ConsolePorts& m_ports;
    LineReader m_script;
    const int m_stopDescriptor;
    int m_lineNumber = 0;
    std::string m_line;
    std::deque<Command> m_scene; // the rest of the scene; the script goes on after it
    std::optional<Clock::time_point> m_nextBeat;
    std::optional<Clock::time_point> m_waitUntil;
    std::optional<Clock::time_point> m_answerUntil;
    bool m_isQuitting = false;
    std::optional<ExitCode> m_exitCode;
};

} // namespace kestrel::console
