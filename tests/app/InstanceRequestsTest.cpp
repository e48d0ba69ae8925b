#include "app/InstanceRequests.h"

#include "control/ActivityLine.h"
#include "monitor/ActivityList.h"
#include "monitor/ActivityWindow.h"
#include "monitor/MonitorButton.h"
#include "tests/app/AppDelegateBench.h"

#include <chrono>

namespace kestrel::test {
namespace {

using Kind = InstanceMessage::Kind;

class InstanceRequestsTest : public testing::Test {
protected:
    StatusReport report()
    {
        const InstanceReply reply = requests.answer({ Kind::Status, {} });
        EXPECT_EQ(reply.message.kind, Kind::Report);
        EXPECT_FALSE(reply.feed);
        return StatusReport::fromJson(reply.message.body).value();
    }
    void setShortcut(int key, const char* text, std::size_t record = 0)
    {
        bench.delegate->myUserAssignFile()->getSwitchShortcut(key)->replace(
            shortcutRecordOffset(record) + ShortcutRecord::Text, ArchiveValue(QString(text)));
    }

    LaunchedBench bench;
    InstanceRequests requests { bench.platform, *bench.delegate, bench.clock };
};

TEST_F(InstanceRequestsTest, tells_of_a_link_that_is_not_open)
{
    bench.processes.names.clear();
    const StatusReport report = this->report();
    EXPECT_EQ(report.link, StatusReport::Closed);
    EXPECT_FALSE(report.onlineSince.isValid());
    EXPECT_EQ(report.process, QCoreApplication::applicationPid());
    EXPECT_EQ(report.version, KESTREL_VERSION);
    EXPECT_FALSE(report.workstationRuns);
    EXPECT_EQ(report.front, "");
    EXPECT_EQ(report.keysSet, 0);
    EXPECT_EQ(report.consolePairs, 0);
}

TEST_F(InstanceRequestsTest, tells_of_a_link_that_is_online)
{
    bench.receive({ 0x90, 0x00, 0x00 });
    bench.clock.advance(std::chrono::seconds(2));
    bench.receive({ 0x90, 0x00, 0x00 });
    const StatusReport report = this->report();
    EXPECT_EQ(report.link, StatusReport::Online);
    const qint64 online = report.onlineSince.msecsTo(QDateTime::currentDateTimeUtc());
    EXPECT_GE(online, 2000);
    EXPECT_LT(online, 60000);
    EXPECT_EQ(report.beats, 2);
    EXPECT_EQ(report.missedBeats, 1);
    EXPECT_EQ(report.consolePairs, 5);
    EXPECT_TRUE(report.workstationRuns);
}

TEST_F(InstanceRequestsTest, does_not_wait_for_the_MIDI_service)
{
    bench.receive({ 0x90, 0x00, 0x00 });
    bench.midiServices.deviceList.clear(); // without a notification
    EXPECT_EQ(report().consolePairs, 5);
}

TEST_F(InstanceRequestsTest, counts_the_keys_that_have_a_shortcut)
{
    setShortcut(6, "S");
    setShortcut(6, "A", 1);
    setShortcut(7, "F5", 3);
    EXPECT_EQ(report().keysSet, 2);
}

TEST_F(InstanceRequestsTest, counts_presses_and_names_what_is_in_front)
{
    setShortcut(6, "S");
    bench.workspace.applications = { { "Mail", true } };
    bench.receive({ 0xB0, 0x0F, 0x40, 0x2F, 0x45 });
    EXPECT_EQ(report().front, "Mail");
    bench.workspace.applications = { { "Pro Tools", true } };
    bench.receive({ 0xB0, 0x0F, 0x40, 0x2F, 0x45 });
    bench.receive({ 0xB0, 0x0F, 0x40, 0x2F, 0x05 });
    const StatusReport report = this->report();
    EXPECT_EQ(report.front, "Pro Tools");
    EXPECT_EQ(report.keysTyped, 1);
    EXPECT_EQ(report.keysKeptBack, 1);
}

TEST_F(InstanceRequestsTest, tells_what_the_session_denies)
{
    bench.permissions.granted = false;
    EXPECT_FALSE(report().mayPostKeys);
    bench.permissions.granted = true;
    EXPECT_TRUE(report().mayPostKeys);
}

TEST_F(InstanceRequestsTest, lets_a_program_follow_the_activity)
{
    const InstanceReply reply = requests.answer({ Kind::Follow, {} });
    EXPECT_EQ(reply.message.kind, Kind::Done);
    ASSERT_TRUE(reply.feed);
    bench.receive({ 0x90, 0x00, 0x01 }); // opens the link
    static_cast<void>(reply.feed());
    EXPECT_EQ(reply.feed(), "");
    bench.receive({ 0x90, 0x00, 0x00 });
    const auto line = ActivityLine::fromJson(reply.feed());
    ASSERT_TRUE(line);
    EXPECT_EQ(line->event.outcome(), ActivityEvent::Outcome::Answered);
}

TEST_F(InstanceRequestsTest, keeps_for_those_who_follow_what_the_activity_window_clears)
{
    bench.receive({ 0x90, 0x00, 0x01 }); // opens the link
    const InstanceReply before = requests.answer({ Kind::Follow, {} });
    static_cast<void>(before.feed());
    bench.receive({ 0xB0, 0x0F, 0x40, 0x2F, 0x45 });
    bench.delegate->showActivity();
    for (auto* const button : bench.delegate->activityWindow()->findChildren<MonitorButton*>()) {
        if (button->text() == QStringLiteral("Clear"))
            button->click();
    }
    EXPECT_EQ(bench.delegate->activityWindow()->list().model()->rowCount(), 0);
    EXPECT_TRUE(before.feed().contains("Key 6 pressed"));
    EXPECT_TRUE(requests.answer({ Kind::Follow, {} }).feed().contains("Key 6 pressed"));
}

TEST_F(InstanceRequestsTest, refuses_what_it_does_not_know)
{
    for (const Kind kind : { Kind::Done, Kind::Report, static_cast<Kind>('?') })
        EXPECT_EQ(requests.answer({ kind, {} }).message.kind, Kind::Refused);
}

} // namespace
} // namespace kestrel::test
