#include "tools/kestrelctl/StatusText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using testing::Contains;
using testing::ElementsAre;

const QDateTime Now({ 2026, 11, 22 }, { 12, 30 }, Qt::UTC);

StatusReport onlineReport()
{
    StatusReport report;
    report.version = "1.2.3";
    report.process = 4711;
    report.link = StatusReport::Online;
    report.onlineSince = Now.addSecs(-3 * 60);
    report.beats = 180;
    report.consolePairs = 5;
    report.workstationRuns = true;
    report.front = "Pro Tools";
    report.keysSet = 3;
    report.keysTyped = 1;
    report.mayPostKeys = true;
    return report;
}

TEST(StatusText, says_in_a_line_each_what_holds)
{
    EXPECT_THAT(ctl::statusText(onlineReport(), Now),
        ElementsAre("Kestrel 1.2.3, process 4711",
            "Link         online since 2026-11-22 12:27:00 (3 min)",
            "Console      ZENTA, 5 pairs of ports", "Heartbeats   180, 0 missed",
            "Workstation  Pro Tools runs", "In front     Pro Tools",
            "Keys         3 of 12 set, 1 press typed, 0 kept back", "Permission   given"));
}

TEST(StatusText, says_what_is_missing)
{
    StatusReport report;
    report.version = "1.2.3";
    report.notices = QStringList { "Wayland: keys reach X11 programs only" };
    EXPECT_THAT(ctl::statusText(report, Now),
        ElementsAre("Kestrel 1.2.3, process 0", "Link         offline: not opened yet",
            "Console      not looked for yet", "Heartbeats   0, 0 missed",
            "Workstation  Pro Tools does not run", "In front     unknown",
            "Keys         0 of 12 set, 0 presses typed, 0 kept back",
            "Permission   missing: keys are not typed",
            "Notice       Wayland: keys reach X11 programs only"));
    report.link = StatusReport::NoConsole;
    EXPECT_THAT(ctl::statusText(report, Now), Contains("Console      not seen"));
}

TEST(StatusText, obeys_no_control_characters_of_others)
{
    StatusReport report = onlineReport();
    report.front = QString::fromUtf8("\x1b[2JNasty\n");
    EXPECT_THAT(ctl::statusText(report, Now), Contains("In front     .[2JNasty."));
}

TEST(StatusText, measures_long_times_in_hours)
{
    StatusReport report = onlineReport();
    report.onlineSince = Now.addSecs(-(26 * 3600 + 5 * 60));
    EXPECT_THAT(ctl::statusText(report, Now),
        Contains("Link         online since 2026-11-21 10:25:00 (26 h 5 min)"));
}

} // namespace
} // namespace kestrel::test
