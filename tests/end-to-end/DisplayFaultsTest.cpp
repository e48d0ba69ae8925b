#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/KeysDown.h"
#include "tools/stage/Patience.h"
#include "tools/stage/XQuery.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <string>

namespace kestrel::test {
namespace {

using stage::milliseconds;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr milliseconds Timeout { 20000 };
constexpr std::size_t HugeClass = 10 * 1024 * 1024; // bytes

// A running program whose key 1 types F5, which every layout has in the same place.
class DisplayFaults : public testing::Test {
protected:
    DisplayFaults()
    {
        studio.studio.assign({ "1", "F5" });
        studio.startEverything();
    }
    void SetUp() override { ASSERT_TRUE(studio.isAnswered()); }

    void run(const std::vector<std::string>& command) const
    {
        stage::ChildProcess process(command, studio.studio.environment());
        ASSERT_EQ(process.wait(Timeout), 0) << command.front();
    }
    void expectKeyPasses()
    {
        studio.waitUntilInFront("Pro Tools");
        static_cast<void>(studio.strayKeys(*studio.workstation));
        EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down F5"));
        EXPECT_THAT(studio.keysAfter("release 1"), ElementsAre("up F5"));
        EXPECT_THAT(stage::keysDown(studio.studio.displayName()), IsEmpty());
    }
    [[nodiscard]] bool runs() { return !studio.kestrel->wait(milliseconds(0)); }

    [[nodiscard]] bool isDisplayUp() const
    {
        const stage::XConnection probe(
            xcb_connect(studio.studio.displayName().c_str(), nullptr), &xcb_disconnect);
        return xcb_connection_has_error(probe.get()) == 0;
    }
    [[nodiscard]] bool hasWindowManager() const
    {
        const auto connection = stage::connectTo(studio.studio.displayName());
        return !stage::propertyOf(connection.get(), stage::firstScreen(connection.get()).root,
            stage::atomOf(connection.get(), "_NET_SUPPORTING_WM_CHECK"))
                    .empty();
    }

    RunningStudio studio;
};

TEST_F(DisplayFaults, a_window_manager_that_is_restarted_while_a_key_is_held_leaves_none_down)
{
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down F5"));
    run({ "openbox", "--restart" });
    EXPECT_THAT(studio.keysAfter("release 1"), Contains("up F5"));
    EXPECT_TRUE(studio.allKeysComeUp());
    run({ "xdotool", "search", "--sync", "--onlyvisible", "--name", "^Pro Tools$",
        "windowactivate" });
    expectKeyPasses();
}

TEST_F(DisplayFaults, a_front_window_that_is_destroyed_while_a_key_is_held_leaves_it_up)
{
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down F5"));
    studio.workstation->signal(SIGKILL);
    EXPECT_TRUE(studio.allKeysComeUp());
    const auto other = studio.startOtherApplication();
    studio.console->writeLine("release 1");
    studio.console->writeLine("press 1");
    EXPECT_THAT(studio.strayKeys(*other), IsEmpty());
    studio.startWorkstation();
    EXPECT_TRUE(studio.isAnswered());
    expectKeyPasses();
}

TEST_F(DisplayFaults, a_window_class_of_ten_mebibytes_is_no_matter)
{
    const auto other = studio.startOtherApplication();
    const auto connection = stage::connectTo(studio.studio.displayName());
    const auto root = stage::firstScreen(connection.get()).root;
    const std::string active = stage::propertyOf(
        connection.get(), root, stage::atomOf(connection.get(), "_NET_ACTIVE_WINDOW"));
    ASSERT_EQ(active.size(), sizeof(xcb_window_t));
    xcb_window_t window = XCB_WINDOW_NONE;
    active.copy(reinterpret_cast<char*>(&window), sizeof window);
    const auto setClass = [&](const std::string& name) {
        const std::string both = name + '\0' + name + '\0';
        xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS,
            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(both.size()), both.data());
        xcb_flush(connection.get());
    };
    setClass(std::string(HugeClass / 2, 'x'));
    ASSERT_TRUE(stage::comesTrue(
        [&] {
            return stage::propertyOf(connection.get(), window, XCB_ATOM_WM_CLASS)
                .starts_with("xxxxx");
        },
        Timeout));
    EXPECT_THAT(studio.strayKeysAfter("press 1"), IsEmpty());
    EXPECT_THAT(studio.strayKeys(*other), IsEmpty());
    EXPECT_TRUE(runs());
    EXPECT_TRUE(studio.isAnswered());
    setClass("Pro Tools");
    EXPECT_TRUE(stage::comesTrue(
        [&] {
            studio.console->writeLine("press 1");
            return !studio.strayKeys(*other).empty();
        },
        Timeout))
        << "it still reads classes";
    studio.console->writeLine("release 1");
    EXPECT_TRUE(studio.allKeysComeUp());
}

TEST_F(DisplayFaults, a_key_that_is_held_while_the_layout_changes_comes_up)
{
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down F5"));
    run({ "setxkbmap", "-layout", "fr", "-option", "ctrl:swapcaps" });
    EXPECT_THAT(studio.keysAfter("release 1"), Contains("up F5"));
    EXPECT_THAT(stage::keysDown(studio.studio.displayName()), IsEmpty());
    expectKeyPasses();
}

TEST_F(DisplayFaults, a_display_that_comes_back_under_its_name_gets_the_next_start)
{
    EXPECT_THAT(studio.keysAfter("press 1"), ElementsAre("down F5"));
    studio.studio.display().kill();
    EXPECT_EQ(studio.kestrel->wait(Timeout), 1);
    const stage::ChildProcess server({ "Xvfb", studio.studio.displayName(), "-screen", "0",
        "1280x800x24", "-nolisten", "tcp", "-noreset" });
    ASSERT_TRUE(stage::comesTrue([this] { return isDisplayUp(); }, Timeout));
    const stage::ChildProcess manager({ "openbox" }, studio.studio.environment());
    ASSERT_TRUE(stage::comesTrue([this] { return hasWindowManager(); }, Timeout));
    studio.startWorkstation();
    studio.startKestrel();
    EXPECT_TRUE(studio.isAnswered());
    expectKeyPasses();
}

} // namespace
} // namespace kestrel::test
