#pragma once

#include "tools/demo/Performance.h"

namespace kestrel {

// What the console's buttons type into the workstation, and into nothing else.
class KeyAct {
public:
    explicit KeyAct(Performance& performance)
        : m_performance(performance)
    {
    }

    void assign();
    void pressAndRelease();
    void pressFourShortcuts();
    void openSet(); // into the running program
    void pressBehindAnotherWindow();

private:
    Performance& m_performance;
};

} // namespace kestrel
