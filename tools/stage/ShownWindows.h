#pragma once

#include "tools/stage/Screen.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel::stage {

// A visible window.
struct ShownWindow {
    std::uint32_t id;
    std::string title; // empty when it has none
    Area area; // on the screen, without the window manager's frame
    bool isPopup; // it bypasses the window manager, as menus do
};

// The visible windows of a program, also embedded ones. Throws std::runtime_error when the display
// does not answer.
[[nodiscard]] std::vector<ShownWindow> shownWindows(
    const std::string& display, std::string_view windowClass);

} // namespace kestrel::stage
