#include "tests/platform/linux/x11/X11Bench.h"
#include "tools/stage/Patience.h"

#include <string>

namespace kestrel::test {

namespace {
using Result = KeyEvents::Result;

// The four shortcuts of one console key are posted after one look at the front application.
class Stroke : public X11Bench {
protected:
    static constexpr std::size_t Records = 4;

    std::string visited()
    {
        std::string names;
        workspace->visitActiveApplications([&](std::string_view localizedName) {
            names += localizedName;
            return true;
        });
        return names;
    }
    void postRecord(std::size_t record)
    {
        switch (record) {
        case 0:
            return pressShortcut(KeyS, Modifier::Command);
        case 1:
            return pressShortcut(KeyF5, 0);
        case 2:
            return pressShortcut(KeyA, Modifier::Shift | Modifier::Option);
        default:
            return pressShortcut(KeyD, Modifier::Used);
        }
    }
    // The loop does not run here, so the adapters do not get the event.
    static void takeFrontUnheard(const KeyReceiver& receiver)
    {
        receiver.activate();
        ASSERT_TRUE(
            stage::comesTrue([&receiver] { return receiver.isActive() && receiver.hasFocus(); },
                stage::milliseconds(10'000)));
    }
};
} // namespace

TEST_F(Stroke, rests_on_one_look_whenever_the_front_changes_and_leaves_no_key_down)
{
    KeyReceiver other(server->display(), "Other");
    bringToFront(other);
    for (std::size_t before = 0; before <= Records; ++before) {
        SCOPED_TRACE("changed after record " + std::to_string(before));
        bringToFront(*workstation);
        ASSERT_EQ(visited(), "Pro Tools");
        for (std::size_t record = 0; record < before; ++record)
            postRecord(record);
        takeFrontUnheard(other);
        for (std::size_t record = before; record < Records; ++record)
            postRecord(record);
        EXPECT_EQ(session->front.name(), "Pro Tools") << "posting has taken in the change";

        EXPECT_TRUE(loop.runUntil([this] { return session->front.name() == "Other"; }));
        settle();
        EXPECT_TRUE(user->keysDown().none());
        EXPECT_EQ(visited(), "Other");
        workstation->keys(); // discards the events; the keys that are down were checked
        other.keys();
    }
}

TEST_F(Stroke, is_not_begun_once_the_change_of_the_front_has_arrived)
{
    KeyReceiver other(server->display(), "Other");
    bringToFront(other);
    bringToFront(*workstation);
    EXPECT_EQ(press(KeyA), Result::Posted);
    takeFrontUnheard(other);
    EXPECT_EQ(visited(), "Other");
    settle();
    EXPECT_TRUE(user->keysDown().none());
}

} // namespace kestrel::test
