#pragma once

#include "tools/selftest/Studio.h"

#include <functional>
#include <string>
#include <vector>

namespace kestrel::selftest {

class Scene;

// One line of the report. It passes unless `run` throws.
struct Check {
    std::string name;
    std::vector<Need> needs;
    std::function<void(Scene&)> run;
};

using Checks = std::vector<Check>;

// The checks of each subject, in the order in which they share the scene.
[[nodiscard]] Checks launchChecks();
[[nodiscard]] Checks panelChecks();
[[nodiscard]] Checks keyChecks();
[[nodiscard]] Checks setupChecks();
[[nodiscard]] Checks linkChecks();
[[nodiscard]] Checks endChecks();
[[nodiscard]] Checks imageChecks();

} // namespace kestrel::selftest
