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
// the end of the MIDI server ends it.
class Console {
public:
    struct Options {
        double speed = 1; // of the times in the script
        bool loops = false; // begins again at the end of the script, which is a file then
    };

    // `stopDescriptor` becomes readable when the program is to end.
    Console(ConsolePorts& ports, int scriptDescriptor, int stopDescriptor, const Options& options);

    [[nodiscard]] ExitCode run();

private:
    using Clock = std::chrono::steady_clock;

    void waitForSomething();
    void readScript();
    [[nodiscard]] std::optional<Clock::duration> timeout() const;
    void beat();
    void reportArrivals();
    void followScript();
    void playScene();
    [[nodiscard]] std::optional<std::string> nextLine();
    void beginAgain();
    [[nodiscard]] Clock::duration atSpeed(std::chrono::microseconds time) const;
    void obey(const std::string& line);
    void obey(const Nothing&) { }
    void obey(const Send& command);
    void obey(const SwitchHeartbeat& command);
    void obey(const Wait& command);
    void obey(const ExpectAnswer& command);
    void obey(const ExpectListener& command);
    void obey(const At& command);
    void obey(const Show&);
    void obey(const Quit&);
    void obey(const Malformed& command);
    void checkExpectations();
    void expectationMet(std::optional<Clock::time_point>& until);
    void send(const Bytes& packet);
    void fail(ExitCode code, const std::string& reason);

    ConsolePorts& m_ports;
    LineReader m_script;
    const int m_stopDescriptor;
    const Options m_options;
    int m_lineNumber = 0;
    std::string m_line;
    std::optional<std::string> m_timedCommand; // comes when m_waitUntil is reached
    std::optional<Clock::time_point> m_begin; // from which the times of At count
    std::deque<Command> m_scene; // the rest of the scene; the script goes on after it
    std::optional<Clock::time_point> m_nextBeat;
    std::optional<Clock::time_point> m_waitUntil;
    std::optional<Clock::time_point> m_answerUntil;
    std::optional<Clock::time_point> m_listenerUntil;
    bool m_isQuitting = false;
    std::optional<ExitCode> m_exitCode;
};

} // namespace kestrel::console
