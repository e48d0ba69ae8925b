#include "tools/kestrelctl/doctor/Checks.h"

namespace kestrel::ctl {

namespace {
constexpr const char* OurEntry = "com.holvik.kestrel.desktop";

bool isOnMac(const DoctorFacts& facts)
{
    return facts.system.display.session == SystemFacts::Session::MacOS;
}

std::string joined(const std::vector<std::string>& names)
{
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : ", ") + name;
    return list;
}
} // namespace

std::optional<Finding> ProgramChecks::kestrel(const DoctorFacts& facts)
{
    switch (facts.kestrel) {
    case RunningKestrel::Outcome::NotRunning:
        return fine("Kestrel is not running.");
    case RunningKestrel::Outcome::NoAnswer:
        return wrong(facts.kestrelProblem
            + (isOnMac(facts) ? " To end it, choose Force Quit in the Apple menu."
                              : " To end it: pkill -KILL -o -x kestrel"));
    case RunningKestrel::Outcome::Refused:
        return wrong(facts.kestrelProblem
            + " If kestrel and kestrelctl are of different versions, start Kestrel anew.");
    case RunningKestrel::Outcome::Answered:
        break;
    }
    if (!facts.status)
        return wrong("Kestrel has answered something else than its status. Start Kestrel anew.");
    return fine("Kestrel " + facts.status->version.toStdString() + " runs and answers.");
}

std::optional<Finding> ProgramChecks::start(const DoctorFacts& facts)
{
    const std::string& problem = facts.system.files.sessionProblem;
    if (problem.empty())
        return fine("The folder of the session can be used.");
    return wrong(problem + " Kestrel cannot start. Remove or rename what is there.");
}

// The other checks say what is missing before a link is opened.
std::optional<Finding> ProgramChecks::link(const DoctorFacts& facts)
{
    if (!facts.status)
        return {};
    if (facts.status->link == StatusReport::Online)
        return fine("The console is online.");
    if (facts.status->link == StatusReport::Silent)
        return wrong("The console has sent no heartbeat for five seconds. Check its cable and its "
                     "power.");
    return fine("The console is not online yet. The link needs up to a quarter of a minute once "
                "Pro Tools and the console are there.");
}

std::optional<Finding> ProgramChecks::tray(const DoctorFacts& facts)
{
    const auto& hasTray = facts.system.display.hasTray;
    if (!hasTray)
        return {};
    if (*hasTray)
        return fine("There is a place for the icon.");
    return wrong("The desktop has no tray, so the icon is not shown. GNOME needs the extension "
                 "AppIndicator. Starting kestrel a second time opens the setup window.");
}

std::optional<Finding> ProgramChecks::defaults(const DoctorFacts& facts)
{
    const DoctorFacts::Defaults& defaults = facts.defaults;
    if (!defaults.problem.empty())
        return wrong("The assignments in " + defaults.place + " cannot be read: " + defaults.problem
            + ". Kestrel starts without them; load a saved set.");
    if (defaults.recoveryWaits && !facts.status)
        return fine("The last run was killed. The next start takes its assignments.");
    return fine("The assignments can be read.");
}

std::optional<Finding> ProgramChecks::damagedCopies(const DoctorFacts& facts)
{
    if (facts.defaults.damaged.empty())
        return fine("No damaged copy was kept aside.");
    return wrong("Kestrel could not read its assignments once and has kept a copy: "
        + joined(facts.defaults.damaged) + ". Load a saved set, and remove the copy.");
}

std::optional<Finding> ProgramChecks::autostart(const DoctorFacts& facts)
{
    const auto& autostart = facts.system.autostart;
    if (!autostart)
        return {};
    if (!autostart->isEnabled)
        return fine("Kestrel does not start at login.");
    if (autostart->missingProgram.empty())
        return fine("Kestrel starts at login.");
    return wrong("The login is to start " + autostart->missingProgram
        + ", which is not there. Switch Launch at Login off and on in Kestrel's menu.");
}

std::optional<Finding> ProgramChecks::fileType(const DoctorFacts& facts)
{
    const auto& opener = facts.system.files.openedBy;
    if (!opener)
        return {};
    if (*opener == OurEntry)
        return fine("A double click opens sets in Kestrel.");
    return wrong("A double click opens sets with " + *opener + ": xdg-mime default " + OurEntry
        + " application/x-zenta-kestrel-assignments");
}

} // namespace kestrel::ctl
