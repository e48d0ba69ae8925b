#pragma once

#include "tools/demo/Performance.h"

namespace kestrel {

// What a person does at the setup window.
class SetupAct {
public:
    explicit SetupAct(Performance& performance)
        : m_performance(performance)
    {
    }

    void assignKey(); // and presses it at the console

private:
    void workAtWindow();

    Performance& m_performance;
};

} // namespace kestrel
