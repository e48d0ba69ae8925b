#pragma once

#include "tools/demo/Performance.h"

namespace kestrel {

// Presses console keys and checks what they type into the workstation, and that they type into no
// other program.
class KeyAct {
public:
    explicit KeyAct(Performance& performance)
        : m_performance(performance)
    {
    }

    void assign();
    void pressAndRelease();
    void pressFourShortcuts();
    void openSet(); // opens a set file in the running program
    void pressBehindAnotherWindow();

private:
    Performance& m_performance;
};

} // namespace kestrel
