#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kestrel {

// A sentence for the user about something that the session or the system denies the program.
struct Notice {
    std::string text; // UTF-8, as short as a menu item
    std::function<void()> act; // the remedy; empty if there is none
};

// The notices about the current session. Main thread only.
class Notices {
public:
    virtual ~Notices() = default;

    // The notices that hold now, most important first. Called each time a menu opens, so it is
    // quick.
    [[nodiscard]] virtual std::vector<Notice> current() = 0;
};

// For systems that deny the program nothing.
class NoNotices final : public Notices {
public:
    std::vector<Notice> current() override { return {}; }
};

} // namespace kestrel
