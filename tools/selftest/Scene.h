#pragma once

#include "tools/selftest/Studio.h"
#include "tools/stage/SetupPlaces.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace kestrel::selftest {

// Says what a check found instead of what it expected.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

void expect(bool holds, const std::string& what);
void expectSame(const std::string& what, const std::string& value, const std::string& expected);

// The programs that the checks share, and what checks do with them.
class Scene {
public:
    using milliseconds = stage::milliseconds;

    // The utility checks the link every five seconds, and its first check only starts the clock.
    static constexpr milliseconds LinkTimeout { 25000 };
    static constexpr milliseconds StartTimeout { 20000 };
    // Far longer than a key takes from the console to the workstation on a busy machine.
    static constexpr milliseconds Quiet { 600 };

    // Pictures go to `folder`, the files of the utility below it.
    Scene(Studio& studio, std::filesystem::path folder, std::filesystem::path approved);

    void startWorkstation();
    void startConsole();
    // Starts it anew, with a set whose key 1 has this name.
    void startUtility(const std::string& name);
    // Starts what does not run, and waits until the console is answered.
    void goOnline();

    // The answer of the utility's probe.
    [[nodiscard]] std::string ask(const std::string& question);
    // Asks until the answer holds; fails with the last answer.
    std::string askUntil(const std::string& question, const std::string& what,
        const std::function<bool(const std::string& answer)>& holds);
    // Waits until the status item shows that the console is online, or that it is not.
    void seeOnline(bool isOnline);

    [[nodiscard]] bool isAnswered(milliseconds timeout = LinkTimeout);
    // The key events that reach the workstation after a command to the console, without those of
    // modifier keys.
    [[nodiscard]] std::string keysAfter(const std::string& command);
    void showPanel();
    void openSetup();
    void clickInSetup(stage::SetupPlaces::Place place);
    void photograph(const std::string& name); // a picture that cannot be taken is only logged
    [[nodiscard]] std::filesystem::path writeSet(const std::string& name) const;

    Studio& studio;
    const std::filesystem::path folder;
    const std::filesystem::path approved; // pictures of the panel
    Studio::Process workstation;
    Studio::Process console;
    Studio::Process utility;
};

// The value after "name=", up to the next space; the rest of the line for "text" and "open".
[[nodiscard]] std::string factOf(const std::string& answer, const std::string& name);

} // namespace kestrel::selftest
