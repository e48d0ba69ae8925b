#pragma once

#include <string_view>

namespace kestrel::DesktopOpen {

// Hands a file to the desktop and does not wait for it. False when the file does not exist or the
// desktop's opener is not installed.
[[nodiscard]] bool open(std::string_view path);

} // namespace kestrel::DesktopOpen
