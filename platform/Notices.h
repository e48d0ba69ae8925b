#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kestrel {

// Something that the session or the system keeps from the program, in words for the user.
struct Notice {
    std::string text; // UTF-8, as short as a menu item
    std::function<void()> act; // what the user can do about it; empty where there is nothing
};

// What the user has to know about the session that the program runs in. Main thread only.
class Notices {
public:
    virtual ~Notices() = default;

    // What holds now, most important first. Asked whenever the user looks, so it answers quickly.
    [[nodiscard]] virtual std::vector<Notice> current() = 0;
};

// Of a session that keeps nothing from the program.
class NoNotices final : public Notices {
public:
    std::vector<Notice> current() override { return {}; }
};

} // namespace kestrel
