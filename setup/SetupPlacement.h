#pragma once

#include "common/ScreenChanges.h"
#include "setup/SavedWindowFrame.h"

namespace kestrel {

class SetupWindow;

// Keeps the setup window at its last place, on the screens that there are, and no larger than its
// screen.
class SetupPlacement {
public:
    // Both outlive every call.
    SetupPlacement(SetupWindow& window, DefaultsStore& defaults);

    void save();
    // Puts the window at its last place, no larger than its present screen.
    void restore();
    // Gives the shown window its full size again where the screen has room for it. Does so once
    // more when the window manager has given the window its frame or has moved it for itself, and
    // whenever the screens change.
    void bringIntoView();

private:
    void fitOntoScreens();
    void moveOntoScreens();
    void fitIntoScreen();

    SetupWindow& m_window;
    SavedWindowFrame m_savedFrame;
    ScreenChanges m_screens;
};

} // namespace kestrel
