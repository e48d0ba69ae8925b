#include "tools/demo/KeyAct.h"

#include "tools/stage/KeyLines.h"

#include <iostream>

namespace kestrel {

void KeyAct::assign()
{
    std::cout << "key 6 gets ⌘S, key 2 gets ⌘C, ⌥F5, A and ⇪⌘Z\n";
    m_performance.studio.assign({ "6", "Command+S", "--title", "Save" });
    m_performance.studio.assign({ "2", "Command+C", "Option+F5", "A", "Shift+Command+Z" });
}

void KeyAct::pressAndRelease()
{
    m_performance.check("press 6 arrives as ⌘S down",
        m_performance.keysAfter("press 6") == "down Super_L; down S Command; up Super_L Command");
    m_performance.check(
        "release 6 arrives as S up", m_performance.keysAfter("release 6") == "up S");
}

void KeyAct::pressFourShortcuts()
{
    m_performance.check("press 2 arrives as four keys down, in order",
        m_performance.keysAfter("press 2")
            == "down Super_L; down C Command; up Super_L Command; "
               "down Alt_L; down F5 Option; up Alt_L Option; "
               "down A; "
               "down Shift_L; down Super_L Shift; down Z Shift+Command; "
               "up Shift_L Shift+Command; up Super_L Command");
    m_performance.check("release 2 arrives as four keys up, in the same order",
        m_performance.keysAfter("release 2") == "up C; up F5; up A; up Z");
    m_performance.photograph("workstation");
}

void KeyAct::openSet()
{
    const auto file = (m_performance.studio.home() / "Mixing.ZKCF").string();
    std::cout << "opening a set in which key 7 types F9\n";
    m_performance.studio.assign({ "7", "F9", "--title", "Solo", "--to", file });
    m_performance.check("key 7 types nothing yet", m_performance.keysAfter("press 7").empty());
    static_cast<void>(m_performance.keysAfter("release 7"));
    m_performance.check("the running program takes the file",
        m_performance.studio.start("kestrel", { file })->wait(Performance::StartTimeout) == 0);
    m_performance.check(
        "press 7 arrives as F9 down", m_performance.keysAfter("press 7") == "down F9");
    m_performance.check(
        "release 7 arrives as F9 up", m_performance.keysAfter("release 7") == "up F9");
}

void KeyAct::pressBehindAnotherWindow()
{
    const auto other
        = m_performance.studio.start("Pro Tools", { "--class", "Notepad", "--title", "Notepad" });
    m_performance.check("another window comes to the front",
        other->waitForLineWith("ready", Performance::StartTimeout).has_value());
    static_cast<void>(m_performance.workstation->linesUntilQuiet(Performance::Quiet));
    m_performance.check("press 6 reaches nobody now", m_performance.keysAfter("press 6").empty());
    m_performance.check(
        "release 6 reaches nobody now", m_performance.keysAfter("release 6").empty());
    bool silent = true;
    for (const auto& line : other->linesUntilQuiet(Performance::Quiet))
        silent = silent && !stage::isKeyLine(line);
    m_performance.check("nor does the other window receive a key", silent);
}

} // namespace kestrel
