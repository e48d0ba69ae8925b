#pragma once

#include "tools/stage/Studio.h"

#include <memory>
#include <string>
#include <vector>

namespace kestrel::test {

// A studio with the three programs. Tests act and observe as a user at the studio would.
class RunningStudio {
public:
    using Process = std::unique_ptr<stage::ChildProcess>;
    using Keys = std::vector<std::string>; // "down S Command", "up S", "down A repeat=yes", …

    // The program checks the link every five seconds, and the first check only starts the clock.
    static constexpr stage::milliseconds LinkTimeout { 25000 };
    static constexpr stage::milliseconds StartTimeout { 20000 };
    static constexpr stage::milliseconds KeyTimeout { 10000 };
    // Far longer than a key takes from the console to the workstation.
    static constexpr stage::milliseconds Quiet { 500 };

    RunningStudio();
    explicit RunningStudio(const stage::Studio::Options& options);

    void startWorkstation(); // waits until it is in front
    void startConsole(const std::vector<std::string>& arguments = {});
    void startKestrel(const std::vector<std::string>& arguments = {}); // waits until it runs
    [[nodiscard]] Process startOtherApplication(); // waits until it is in front
    void startEverything();

    // Returns when the window manager reports a window of that class as active. It does so shortly
    // after the window has got the focus.
    void waitUntilInFront(const std::string& windowClass) const;

    // True when the console gets an answer to a heartbeat that it sends from now on.
    [[nodiscard]] bool isAnswered(stage::milliseconds timeout = LinkTimeout);
    // Gives the console a command that types. Waits for the first key that reaches the workstation
    // and returns it with those that follow until no more arrive.
    [[nodiscard]] Keys keysAfter(const std::string& consoleCommand);
    [[nodiscard]] Keys arrivingKeys(stage::ChildProcess& window) const;
    // The same, but does not wait for a first key.
    [[nodiscard]] Keys strayKeysAfter(const std::string& consoleCommand);
    [[nodiscard]] Keys strayKeys(stage::ChildProcess& window) const;
    // True as soon as no key of the display is down. False if one is still down after ten seconds.
    [[nodiscard]] bool allKeysComeUp() const;
    // Sends SIGTERM and returns the exit code. No value if the program does not end in ten seconds.
    [[nodiscard]] std::optional<int> terminateKestrel();

    stage::Studio studio;
    Process workstation;
    Process console;
    Process kestrel;
};

} // namespace kestrel::test
