#pragma once

#include "tools/stage/Studio.h"

#include <filesystem>
#include <string>
#include <vector>

namespace kestrel {

// What was to be seen, and whether it was.
struct Observation {
    std::string what;
    bool seen;
};

// Somebody opens the setup window of the running Kestrel, gives console key 3 the shortcut ⌥⌘K and
// the name "Consolidate", and presses OK. The picture shows the window just before that.
[[nodiscard]] std::vector<Observation> playSetupScene(const stage::Studio& studio,
    stage::ChildProcess& kestrel, const std::filesystem::path& picture);

} // namespace kestrel
