#pragma once

#include "control/StatusReport.h"
#include "platform/SystemFacts.h"
#include "tools/kestrelctl/RunningKestrel.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrel::ctl {

// All that the checks look at.
struct DoctorFacts {
    struct Defaults {
        std::string place;
        std::string problem; // why they cannot be read; empty if they can
        std::vector<std::string> damaged; // keys and files with copies that were kept aside
        bool recoveryWaits = false; // a run that was killed has left its assignments
    };

    RunningKestrel::Outcome kestrel = RunningKestrel::Outcome::NotRunning;
    std::string kestrelProblem; // a sentence; empty when Kestrel answers
    std::optional<StatusReport> status; // of the running program
    SystemFacts system;
    Defaults defaults;

    // Looks at the running program, the system and the stored defaults, and changes nothing.
    [[nodiscard]] static DoctorFacts gather();
};

} // namespace kestrel::ctl
