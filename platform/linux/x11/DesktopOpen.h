#pragma once

#include <string_view>

namespace kestrel::DesktopOpen {

// Opens a file with xdg-open and does not wait for it. False when the file does not exist or
// xdg-open is not installed.
[[nodiscard]] bool open(std::string_view path);

} // namespace kestrel::DesktopOpen
