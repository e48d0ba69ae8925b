#include "platform/Workstation.h"
#include "tools/kestrelctl/doctor/Checks.h"

#include <algorithm>

namespace kestrel::ctl {

namespace {
using Session = SystemFacts::Session;

const std::string Name(Workstation::Name);

std::string quoted(const std::string& text)
{
    return '"' + text + '"';
}

bool showsRightWindow(const DoctorFacts& facts)
{
    const auto& windows = facts.system.display.workstationWindows;
    return windows && std::find(windows->begin(), windows->end(), Name) != windows->end();
}
} // namespace

std::optional<Finding> KeyChecks::display(const DoctorFacts& facts)
{
    const SystemFacts::Display& display = facts.system.display;
    if (display.session == Session::MacOS)
        return {};
    if (display.name.empty())
        return wrong("Kestrel needs an X11 display, and DISPLAY is not set. On Wayland, install "
                     "and enable Xwayland.");
    if (!display.answers)
        return wrong("The X11 display " + quoted(display.name)
            + " does not answer. On Wayland, install and enable Xwayland.");
    if (display.qtPlugin.starts_with("wayland"))
        return wrong("QT_QPA_PLATFORM is " + quoted(display.qtPlugin)
            + ". Start Kestrel with QT_QPA_PLATFORM=xcb kestrel");
    return fine("The X11 display " + quoted(display.name) + " answers.");
}

std::optional<Finding> KeyChecks::session(const DoctorFacts& facts)
{
    switch (facts.system.display.session) {
    case Session::MacOS:
        return {};
    case Session::X11:
        if (!facts.system.display.answers)
            return {}; // the check of the display has said it
        return fine("This is an X11 session.");
    case Session::Wayland:
        break;
    }
    if (showsRightWindow(facts))
        return fine(
            "This is a Wayland session, and " + Name + " is an X11 program: keys reach it.");
    return wrong("This is a Wayland session. Keys reach X11 programs only; a native Wayland "
                 "program needs an X11 session.");
}

std::optional<Finding> KeyChecks::workstation(const DoctorFacts& facts)
{
    if (facts.system.workstationRuns)
        return fine(Name + " runs.");
    return wrong("No process has exactly the name " + quoted(Name)
        + ". Start it; the link opens only while it runs.");
}

std::optional<Finding> KeyChecks::window(const DoctorFacts& facts)
{
    const auto& windows = facts.system.display.workstationWindows;
    if (!windows || !facts.system.workstationRuns)
        return {};
    if (showsRightWindow(facts))
        return fine("A window has the class " + quoted(Name) + '.');
    if (windows->empty())
        return wrong(Name + " shows no window with the class " + quoted(Name)
            + ", so no keys reach it. xprop WM_CLASS shows the class of a window.");
    return wrong("The window of " + Name + " has the class " + quoted(windows->front())
        + ", so no keys reach it. It must be " + quoted(Name) + '.');
}

std::optional<Finding> KeyChecks::front(const DoctorFacts& facts)
{
    const auto& front = facts.system.display.front;
    if (!front)
        return {};
    if (*front == Name)
        return fine(Name + " is in front.");
    return fine(quoted(*front) + " is in front. Keys are typed only while " + Name + " is.");
}

std::optional<Finding> KeyChecks::permission(const DoctorFacts& facts)
{
    if (!facts.status)
        return {};
    if (facts.status->mayPostKeys)
        return fine("Kestrel may post keys.");
    return wrong("The permission to post keys is missing. Give it in the system's settings under "
                 "Privacy & Security, Accessibility.");
}

std::optional<Finding> KeyChecks::leftoverKeys(const DoctorFacts& facts)
{
    if (facts.system.display.session == Session::MacOS || !facts.system.display.answers)
        return {};
    const int count = facts.system.files.leftoverKeys;
    if (count == 0)
        return fine("No run has left a key down.");
    return wrong(std::to_string(count) + (count == 1 ? " key" : " keys")
        + " may still be down since a run was killed. Start Kestrel: it releases what was held.");
}

} // namespace kestrel::ctl
