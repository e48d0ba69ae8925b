#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::stage {

using std::chrono::milliseconds;

// A program started for a test, a demonstration or a bench. It ends with this object, and on Linux
// also when the process that started it is killed.
class ChildProcess {
public:
    using Environment = std::map<std::string, std::string>; // added to the caller's own environment
    using LinePredicate = std::function<bool(std::string_view)>;

    // Throws std::system_error when the program cannot be started.
    explicit ChildProcess(
        const std::vector<std::string>& command, const Environment& environment = {});
    ~ChildProcess(); // sends SIGTERM, and SIGKILL if the program still runs two seconds later
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // The next line of standard output that fulfils the predicate. Lines before it are dropped. No
    // value when the time runs out or the output ends.
    std::optional<std::string> waitForLine(const LinePredicate& wanted, milliseconds timeout);
    std::optional<std::string> waitForLineWith(std::string_view text, milliseconds timeout);
    // Every line that arrives within `quiet` of the line before it. The first longer pause ends the
    // list.
    std::vector<std::string> linesUntilQuiet(milliseconds quiet);

    void writeLine(std::string_view line);
    void closeInput();
    void signal(int number) const;
    // Returns when every thread of the program stands still.
    void stop() const;
    void resume() const;
    // The exit code, or 128 + the number of the signal that ended the program. No value when time
    // runs out.
    std::optional<int> wait(milliseconds timeout);

    [[nodiscard]] pid_t pid() const { return m_pid; }

private:
    std::optional<std::string> nextLine(std::chrono::steady_clock::time_point deadline);

    pid_t m_pid = -1;
    int m_input = -1;
    int m_output = -1;
    std::string m_partial;
    std::optional<int> m_exitCode;
};

} // namespace kestrel::stage
