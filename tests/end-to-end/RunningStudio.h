#pragma once

#include "tools/stage/Studio.h"

#include <memory>
#include <string>
#include <vector>

namespace kestrel::test {

// A studio with the three programs, and what a person at it would do and see.
class RunningStudio {
public:
    using Process = std::unique_ptr<stage::ChildProcess>;
    using Keys = std::vector<std::string>; // "down S Command", "up S", "down A repeat=yes", …

    // The link is looked after every five seconds, and the first look only arms the clock.
    static constexpr stage::milliseconds LinkTimeout { 25000 };
    static constexpr stage::milliseconds StartTimeout { 20000 };
    // Far longer than a key takes from the console to the workstation on a busy machine.
    static constexpr stage::milliseconds Quiet { 500 };

    RunningStudio();
    explicit RunningStudio(const stage::Studio::Options& options);

    void startWorkstation(); // waits until it is in front
    void startConsole(const std::vector<std::string>& arguments = {});
    void startKestrel(const std::vector<std::string>& arguments = {}); // waits until it is up
    [[nodiscard]] Process startOtherApplication(); // waits until it is in front
    void startEverything();

    // Returns when the window manager calls a window of that class active, which it does a moment
    // after it has given it the focus.
    void waitUntilInFront(const std::string& windowClass) const;

    // True when the console gets an answer to a heartbeat that it sends from now on.
    [[nodiscard]] bool isAnswered(stage::milliseconds timeout = LinkTimeout);
    // Gives the console a command; the keys that reach the workstation until it is quiet again.
    [[nodiscard]] Keys keysAfter(const std::string& consoleCommand);
    [[nodiscard]] Keys arrivingKeys(stage::ChildProcess& window) const;
    // True as soon as no key of the display is down; false when that takes two seconds.
    [[nodiscard]] bool allKeysComeUp() const;
    // The exit code after a SIGTERM; missing when it does not end in ten seconds.
    [[nodiscard]] std::optional<int> terminateKestrel();

    stage::Studio studio;
    Process workstation;
    Process console;
    Process kestrel;
};

} // namespace kestrel::test
