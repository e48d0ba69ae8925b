#include "tools/demo/SetupAct.h"

#include "tools/stage/SetupWindowOnScreen.h"

#include <iostream>
#include <stdexcept>

namespace kestrel {

void SetupAct::assignKey()
{
    std::cout << "giving key 3 the shortcut ⌥⌘K and the name \"Consolidate\" in the setup window\n";
    try {
        workAtWindow();
    } catch (const std::runtime_error& error) {
        m_performance.check(error.what(), false);
    }
    static_cast<void>(m_performance.workstation->linesUntilQuiet(Performance::Quiet));
    m_performance.check("press 3 arrives as ⌥⌘K down",
        m_performance.keysAfter("press 3")
            == "down Alt_L; down Super_L Option; down K Option+Command; "
               "up Alt_L Option+Command; up Super_L Command");
    m_performance.check(
        "release 3 arrives as K up", m_performance.keysAfter("release 3") == "up K");
}

void SetupAct::workAtWindow()
{
    const stage::SetupWindowOnScreen setup(m_performance.studio);
    // A second start opens the window, also on desktops without a tray.
    const auto second = m_performance.studio.start("kestrel");
    m_performance.check(
        "a second start hands over to the first", second->wait(Performance::StartTimeout) == 0);
    setup.person.waitUntilShown(setup.Title);
    setup.select(3);
    setup.person.press("super+alt+k");
    setup.assign();
    setup.rename(3, "Consolidate");
    m_performance.photograph("setup");
    setup.ok();
    m_performance.check("OK closes the setup window", true);
}

} // namespace kestrel
