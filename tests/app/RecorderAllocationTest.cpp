#include "app/ActivityRecorder.h"
#include "assign/KeystrokePoster.h"
#include "assign/StoredAssignments.h"
#include "link/MIDIMessage.h"
#include "tests/fakes/FakeSystem.h"
#include "tools/allocations/CountedAllocations.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

// Takes every key and remembers nothing.
class AcceptedKeys final : public KeyEvents {
public:
    [[nodiscard]] Result post(KeyCode, Direction, ModifierFlags, AutoRepeat) override
    {
        return Result::Posted;
    }
    [[nodiscard]] Result postBare(KeyCode, Direction) override { return Result::Posted; }
    void releaseAll() override { }
};

MIDIMessage& keyPress()
{
    static MIDIMessage message;
    message.setReadData(std::array<std::uint8_t, 5> { 0xB0, 0x0F, 0x40, 0x2F, 0x45 });
    return message;
}

TEST(RecorderAllocation, the_counter_counts)
{
    const long before = allocations();
    delete new int(0);
    EXPECT_EQ(allocations() - before, 1);
}

TEST(RecorderAllocation, recording_events_and_what_became_of_keys_allocates_nothing)
{
    const SteadyClock clock;
    ActivityRecorder recorder(clock);
    FakeDefaultsStore defaults;
    FakeWorkspace workspace;
    FakePermissions permissions;
    AcceptedKeys keys;
    StoredAssignments assignments(defaults);
    assignments.setupShortcutKey();
    ArchiveArray& entry = *assignments.myUserAssignFile()->getSwitchShortcut(6);
    entry.replace(ShortcutRecord::Modifiers, ArchiveValue(Modifier::Command));
    entry.replace(ShortcutRecord::Text, ArchiveValue(QStringLiteral("S")));
    workspace.applications = { { "Pro Tools", true } };
    KeystrokePoster poster(assignments, workspace, keys, permissions);
    MIDIMessage& message = keyPress();

    const auto countedPress = [&](unsigned int code) {
        const long before = allocations();
        recorder.noteKey(poster.eventKeyPost(code));
        recorder.record(message);
        recorder.linkChanged(LinkEvent::PacketsLost, {});
        return allocations() - before;
    };
    // Looking an entry up makes the key of the table and a list of its records; what is told of it
    // adds nothing to that.
    const long lookUp = [&] {
        const long before = allocations();
        static_cast<void>(assignments.myUserAssignFile()->getSwitchShortcut(6));
        return allocations() - before;
    }();
    for (std::size_t i = 0; i < 2 * ActivityLog::Capacity; ++i)
        ASSERT_EQ(countedPress(69), lookUp);
    EXPECT_EQ(recorder.log().event(recorder.log().count() - 2).text(), "⌘S");
    workspace.applications = { { "Finder", true } };
    EXPECT_EQ(countedPress(69), 0);
    EXPECT_EQ(recorder.log().event(recorder.log().count() - 2).text(), "Finder");
}

} // namespace
} // namespace kestrel::test
