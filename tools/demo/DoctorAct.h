#pragma once

#include "tools/demo/Performance.h"

#include <string>

namespace kestrel {

// The part of the demonstration in which kestrelctl looks for what is wrong.
class DoctorAct {
public:
    explicit DoctorAct(Performance& performance)
        : m_performance(performance)
    {
    }

    void findNothingWrong();
    void findMissingConsole();

private:
    // Prints what it says, and is true when one line begins so.
    [[nodiscard]] bool says(const std::string& start);

    Performance& m_performance;
};

} // namespace kestrel
