#include "activity/OutcomeWords.h"
#include "activity/PacketWords.h"
#include "tests/app/AppDelegateBench.h"

#include <gmock/gmock.h>

#include <chrono>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

// Each event from this number on as "what happened → what became of it".
std::vector<std::string> story(const ActivityLog& log, std::uint64_t from)
{
    std::vector<std::string> lines;
    for (auto number = from; number < log.count(); ++number) {
        const ActivityEvent& event = log.event(number);
        const std::string outcome = OutcomeWords::describe(event);
        lines.push_back(PacketWords::describe(event) + (outcome.empty() ? "" : " → ") + outcome);
    }
    return lines;
}

class Activity : public testing::Test {
protected:
    Activity()
    {
        bench.receive({ 0x90, 0x00, 0x01 }); // opens the link
        forget();
        ArchiveArray& entry = *bench.delegate->myUserAssignFile()->getSwitchShortcut(6);
        entry.replace(ShortcutRecord::Modifiers, ArchiveValue(Modifier::Command));
        entry.replace(ShortcutRecord::KeyCode, ArchiveValue(1));
        entry.replace(ShortcutRecord::Text, ArchiveValue(QStringLiteral("S")));
    }

    void forget() { m_told = activity.log().count(); }
    // What has happened since the last forget().
    [[nodiscard]] std::vector<std::string> story() const
    {
        return test::story(activity.log(), m_told);
    }

    LaunchedBench bench;
    ActivityRecorder& activity = bench.delegate->activity();

private:
    std::uint64_t m_told = 0;
};

TEST_F(Activity, says_what_became_of_each_packet)
{
    bench.receive({ 0x90, 0x00, 0x00 });
    bench.receive(ZoneOfA);
    bench.receive({ 0xB0, 0x19, 0x25 });
    bench.receive({ 0xB0, 0x0C, 0x1C, 0x2C, 0x46 });
    bench.receive({ 0x90, 0x3C, 0x40 });
    EXPECT_THAT(story(),
        ElementsAre("Heartbeat → answered", "Display zone 0: AAAAAAAAAA → shown",
            "Knob 2: 5 of 11, from the left → shown", "Lamp BYPASS on → shown",
            "Unknown packet → nothing: unknown packet"));
}

TEST_F(Activity, says_what_was_typed)
{
    bench.workspace.applications = { { "Pro Tools", true } };
    bench.receive({ 0xB0, 0x0F, 0x40 });
    bench.receive({ 0xB0, 0x2F, 0x45 });
    bench.receive({ 0xB0, 0x0F, 0x40, 0x2F, 0x05 });
    EXPECT_THAT(story(),
        ElementsAre("Key follows", "Key 6 pressed → typed ⌘S", "Key 6 released → let go of ⌘S"));
}

TEST_F(Activity, says_why_nothing_was_typed)
{
    const Bytes press6 { 0xB0, 0x0F, 0x40, 0x2F, 0x45 };
    bench.workspace.applications = { { "Finder", true } };
    bench.receive(press6);
    bench.workspace.applications = { { "Pro Tools", true } };
    bench.receive({ 0xB0, 0x0F, 0x40, 0x2F, 0x46 });
    bench.keyEvents.result = KeyEvents::Result::NotPermitted;
    bench.receive(press6);
    EXPECT_THAT(story(),
        ElementsAre("Key 6 pressed → nothing: Finder is in front, not Pro Tools",
            "Key 7 pressed → nothing: key 7 has no shortcut",
            "Key 6 pressed → nothing: the permission to post keys is missing"));
    EXPECT_EQ(activity.health().counts().keptBack, 3U);
}

TEST_F(Activity, a_packet_does_not_inherit_what_became_of_the_one_before)
{
    bench.receive(ZoneOfA);
    bench.receive({ 0xB0, 0x2F, 0x45 }); // no zone was selected before
    EXPECT_THAT(story(),
        ElementsAre("Display zone 0: AAAAAAAAAA → shown",
            "Key 6 pressed → nothing: no packet before it selected its zone"));
}

TEST_F(Activity, a_state_that_lasts_is_told_once)
{
    bench.processes.names.clear();
    for (int i = 0; i < 3; ++i) {
        bench.receive({ 0x90, 0x00, 0x00 });
        forget();
        bench.tick();
        EXPECT_EQ(story().size(), i == 0 ? 1U : 0U);
    }
    bench.processes.names = { "Pro Tools" };
    bench.clock.advance(6s);
    bench.tick();
    bench.tick();
    EXPECT_THAT(story(), ElementsAre("Pro Tools is running", "No heartbeat for 5 seconds"));
}

TEST_F(Activity, a_service_that_is_gone_is_told_once_and_then_that_the_link_is_back)
{
    const auto devices = bench.midiServices.deviceList;
    bench.midiServices.deviceList.clear();
    bench.midiServices.failing = { "create client" };
    bench.midiServices.notify(MIDINotification::ObjectRemoved, MIDINotification::Source);
    bench.mainLoop.turn();
    bench.tick();
    bench.tick();
    bench.midiServices.deviceList = devices;
    bench.midiServices.failing.clear();
    bench.tick();
    EXPECT_THAT(story(),
        ElementsAre("Link built anew: a MIDI source has disappeared",
            "The MIDI service does not answer", "Link opened: ZENTA, port 5"));
}

TEST_F(Activity, events_carry_the_time_of_day)
{
    bench.receive(ZoneOfA);
    bench.clock.advance(1500ms);
    bench.receive(ZoneOfA);
    const ActivityLog& log = activity.log();
    const ActivityEvent& last = log.event(log.count() - 1);
    EXPECT_EQ(last.time() - log.event(log.count() - 2).time(), 1500ms);
    EXPECT_EQ(last.wallTime(), bench.clock.wallTime());
}

} // namespace
} // namespace kestrel::test
