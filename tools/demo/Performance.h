#pragma once

#include "tools/stage/Studio.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace kestrel {

// The studio in which the demonstration plays and the record of it: what is done goes to standard
// output with what came of it, and everything that did not happen is counted.
class Performance {
public:
    using Process = std::unique_ptr<stage::ChildProcess>;

    // The link is looked after every five seconds; the first look only arms the clock.
    static constexpr stage::milliseconds LinkTimeout { 20000 };
    static constexpr stage::milliseconds StartTimeout { 15000 };
    // Longer than a press takes on a busy machine by far, and still no wait for a person.
    static constexpr stage::milliseconds Quiet { 400 };

    Performance(std::filesystem::path programs, std::filesystem::path pictures,
        const stage::Studio::Options& options);

    void check(const std::string& what, bool observed);
    // Waits for it.
    void checkSoon(const std::string& what, const std::function<bool()>& holds,
        stage::milliseconds timeout = StartTimeout);
    // Sends the command to the console, and prints what the workstation received by then.
    [[nodiscard]] std::string keysAfter(const std::string& consoleCommand);
    void photograph(const std::string& name);

    [[nodiscard]] int missing() const { return m_missing; }

    stage::Studio studio;
    Process workstation;
    Process console;
    Process kestrel;

private:
    std::filesystem::path m_pictures;
    int m_missing = 0;
};

// Whether a line of the workstation's tells of a key, of all that it tells.
[[nodiscard]] bool isKey(std::string_view line);

} // namespace kestrel
