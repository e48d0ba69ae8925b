#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace kestrel::stage {

struct Colour {
    std::uint8_t red;
    std::uint8_t green;
    std::uint8_t blue;
};

struct Area {
    int x;
    int y;
    int width;
    int height;

    bool operator==(const Area&) const = default;
};

// Reads what a display shows. Every function throws std::runtime_error when it does not answer.
class Screen {
public:
    explicit Screen(std::string display)
        : m_display(std::move(display))
    {
    }

    [[nodiscard]] int count(const Area& area, const std::function<bool(Colour)>& wanted) const;
    // The class of the window that the window manager calls active; empty when there is none.
    [[nodiscard]] std::string activeWindowClass() const;

private:
    std::string m_display;
};

} // namespace kestrel::stage
