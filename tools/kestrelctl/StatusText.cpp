#include "tools/kestrelctl/StatusText.h"

#include "link/ConsoleDevice.h"
#include "platform/Workstation.h"
#include "tools/kestrelctl/Output.h"

#include <QTimeZone>

namespace kestrel::ctl {

namespace {
std::string counted(qint64 count, const char* one, const char* many)
{
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::string duration(qint64 seconds)
{
    if (seconds < 60)
        return std::to_string(seconds) + " s";
    if (seconds < 3600)
        return std::to_string(seconds / 60) + " min";
    return std::to_string(seconds / 3600) + " h " + std::to_string(seconds / 60 % 60) + " min";
}

std::string linkText(const StatusReport& report, const QDateTime& now)
{
    if (report.link == StatusReport::Online) {
        const QDateTime since = report.onlineSince.toTimeZone(now.timeZone());
        return "online since " + since.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toStdString()
            + " (" + duration(report.onlineSince.secsTo(now)) + ')';
    }
    if (report.link == StatusReport::Waiting)
        return "open, waiting for the first heartbeat";
    if (report.link == StatusReport::Silent)
        return "offline: no heartbeat for more than five seconds";
    if (report.link == StatusReport::NoConsole)
        return "offline: no console";
    if (report.link == StatusReport::NoMIDIService)
        return "offline: the MIDI service does not answer";
    return "offline: not opened yet";
}

std::string consoleText(const StatusReport& report)
{
    if (report.link == StatusReport::Closed)
        return "not looked for yet";
    if (report.consolePairs == 0)
        return "not seen";
    return std::string(ConsoleDevice::Model) + ", "
        + counted(report.consolePairs, "pair of ports", "pairs of ports");
}
} // namespace

std::vector<std::string> statusText(const StatusReport& report, const QDateTime& now)
{
    std::vector<std::string> lines {
        "Kestrel " + printable(report.version) + ", process " + std::to_string(report.process),
        "Link         " + linkText(report, now),
        "Console      " + consoleText(report),
        "Heartbeats   " + std::to_string(report.beats) + ", " + std::to_string(report.missedBeats)
            + " missed",
        "Workstation  " + std::string(Workstation::Name)
            + (report.workstationRuns ? " runs" : " does not run"),
        "In front     " + (report.front.isEmpty() ? "unknown" : printable(report.front)),
        "Keys         " + std::to_string(report.keysSet) + " of 12 set, "
            + counted(report.keysTyped, "press", "presses") + " typed, "
            + std::to_string(report.keysKeptBack) + " kept back",
        std::string("Permission   ")
            + (report.mayPostKeys ? "given" : "missing: keys are not typed"),
    };
    for (const QString& notice : report.notices)
        lines.push_back("Notice       " + printable(notice));
    return lines;
}

} // namespace kestrel::ctl
