#pragma once

#include "tools/demo/Performance.h"

namespace kestrel {

// Works the setup window as a person would, and checks the outcome.
class SetupAct {
public:
    explicit SetupAct(Performance& performance)
        : m_performance(performance)
    {
    }

    void assignKey(); // then presses the key at the console

private:
    void workAtWindow();

    Performance& m_performance;
};

} // namespace kestrel
