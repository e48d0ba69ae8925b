#pragma once

#include "tools/stage/Studio.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace kestrel {

// The studio in which the demonstration plays, and its record. Each step is printed with its
// result, and each expectation that did not come true is counted.
class Performance {
public:
    using Process = std::unique_ptr<stage::ChildProcess>;

    // The program checks the link every five seconds, and its first check only starts the clock.
    static constexpr stage::milliseconds LinkTimeout { 20000 };
    static constexpr stage::milliseconds StartTimeout { 15000 };
    // Far longer than a press takes on a busy machine, and still short for a person.
    static constexpr stage::milliseconds Quiet { 400 };

    Performance(std::filesystem::path programs, std::filesystem::path pictures,
        const stage::Studio::Options& options);

    void check(const std::string& what, bool observed);
    // Waits until it holds.
    void checkSoon(const std::string& what, const std::function<bool()>& holds,
        stage::milliseconds timeout = StartTimeout);
    // Sends the command to the console, and prints the keys that the workstation has received.
    [[nodiscard]] std::string keysAfter(const std::string& consoleCommand);
    void photograph(const std::string& name);

    // The folder for what the demonstration leaves behind.
    [[nodiscard]] const std::filesystem::path& pictures() const { return m_pictures; }
    [[nodiscard]] int missing() const { return m_missing; }

    stage::Studio studio;
    Process workstation;
    Process console;
    Process kestrel;

private:
    std::filesystem::path m_pictures;
    int m_missing = 0;
};

} // namespace kestrel
