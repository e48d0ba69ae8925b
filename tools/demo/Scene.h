#pragma once

#include "tools/demo/ActivityAct.h"
#include "tools/demo/DoctorAct.h"
#include "tools/demo/KeyAct.h"
#include "tools/demo/KeySheetAct.h"
#include "tools/demo/PanelAct.h"
#include "tools/demo/Performance.h"
#include "tools/demo/SetupAct.h"

#include <filesystem>

namespace kestrel {

// Plays the demonstration, act by act.
class Scene {
public:
    // Writes screenshots to `pictures`. The panel must match the pictures in `approved`.
    Scene(std::filesystem::path programs, std::filesystem::path pictures,
        std::filesystem::path approved, const stage::Studio::Options& options);

    enum class Ending { AtOnce, WhenTheWorkstationIsClosed };

    // The number of expectations that did not come true.
    [[nodiscard]] int play(Ending ending);

private:
    void openStudio();
    void goOnline();
    void waitForUser();
    void quit();

    Performance m_performance;
    KeyAct m_keys;
    SetupAct m_setup;
    PanelAct m_panel;
    ActivityAct m_activity;
    KeySheetAct m_sheet;
    DoctorAct m_doctor;
};

} // namespace kestrel
