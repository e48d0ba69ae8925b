#pragma once

#include <filesystem>
#include <string>

namespace kestrel::selftest {

// Compares a picture with the approved one for its number of pixels. Returns what differs; empty if
// nothing does. The panel's characters are pictures of their own, so no font of the system counts.
[[nodiscard]] std::string differenceFromApproved(const std::filesystem::path& picture,
    const std::filesystem::path& approved, const std::string& name);

} // namespace kestrel::selftest
