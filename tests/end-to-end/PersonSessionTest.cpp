#include "assign/UserAssignFile.h"
#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/SetupWindowOnScreen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <thread>

namespace kestrel::test {
namespace {

using testing::ElementsAre;

const std::string Alert = "Kestrel Console";

// A user at the setup window of a program that is online.
class PersonSession : public testing::Test {
protected:
    void start()
    {
        studio.startKestrel();
        ASSERT_TRUE(studio.isAnswered());
    }

    void SetUp() override
    {
        studio.startWorkstation();
        studio.startConsole();
    }

    // Quits as the menu does and returns the exit code.
    [[nodiscard]] std::optional<int> quit()
    {
        setup.person.chooseFromTray('q');
        return studio.kestrel->wait(stage::milliseconds(10000));
    }

    [[nodiscard]] RunningStudio::Keys pressed(int key)
    {
        waitUntilPressesCount();
        return studio.keysAfter("press " + std::to_string(key));
    }
    [[nodiscard]] bool doesNothing(int key)
    {
        waitUntilPressesCount();
        return studio.strayKeysAfter("press " + std::to_string(key)).empty();
    }
    void waitUntilPressesCount() const
    {
        studio.waitUntilInFront("Pro Tools");
        // The key-up of a key that closed a menu arrives here.
        static_cast<void>(studio.strayKeys(*studio.workstation));
    }
    [[nodiscard]] RunningStudio::Keys released(int key)
    {
        return studio.keysAfter("release " + std::to_string(key));
    }

    [[nodiscard]] std::string path(const std::string& name) const
    {
        return (studio.studio.home() / name).string();
    }
    // Null if the file does not exist or holds no assignment set.
    [[nodiscard]] std::shared_ptr<UserAssignFile> read(const std::string& name) const
    {
        std::ifstream file(path(name), std::ios::binary);
        const UserAssignFile::Bytes bytes(std::istreambuf_iterator<char>(file), {});
        try {
            return UserAssignFile::fromFileImage(bytes);
        } catch (const std::exception&) {
            return nullptr;
        }
    }
    // The program writes the file just after the sheet has closed, so this waits for it.
    [[nodiscard]] std::shared_ptr<UserAssignFile> saved(const std::string& name) const
    {
        auto set = read(name);
        for (int look = 0; !set && look < 500; ++look) {
            std::this_thread::sleep_for(stage::milliseconds(10));
            set = read(name);
        }
        return set;
    }
    [[nodiscard]] static QString text(const UserAssignFile& set, int number)
    {
        return set.getSwitchShortcut(number)->at(ShortcutRecord::Text).text();
    }

    RunningStudio studio;
    stage::SetupWindowOnScreen setup { studio.studio };
};

const auto CommandSDown = ElementsAre("down Super_L", "down S Command", "up Super_L Command");

TEST_F(PersonSession, a_shortcut_is_captured_named_used_saved_and_loaded_again)
{
    start();
    EXPECT_TRUE(doesNothing(6));
    setup.open();
    setup.select(6);
    setup.person.press("super+s");
    setup.assign();
    setup.rename(6, "Save take");
    setup.ok();
    EXPECT_THAT(pressed(6), CommandSDown);
    EXPECT_THAT(released(6), ElementsAre("up S"));

    setup.open();
    setup.save(path("My take 1.2"));
    const auto set = saved("My take 1.2.ZKCF");
    ASSERT_NE(set, nullptr) << "the extension is added to a name without it";
    EXPECT_EQ(text(*set, 6), QStringLiteral("S"));
    EXPECT_EQ(set->getShortcutTitle(6), QStringLiteral("Save take"));
    setup.cancel();
    EXPECT_EQ(quit(), 0);

    std::filesystem::remove(studio.studio.configFolder() / "com.holvik.kestrel.plist");
    start();
    EXPECT_TRUE(doesNothing(6)) << "nothing is left of the settings";
    setup.open();
    setup.load(path("My take 1.2.ZKCF"));
    setup.ok();
    EXPECT_THAT(pressed(6), CommandSDown);
    EXPECT_THAT(released(6), ElementsAre("up S"));
    setup.open();
    setup.save(path("again"));
    const auto again = saved("again.ZKCF");
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(*again->getSwitchShortcut(6), *set->getSwitchShortcut(6));
    EXPECT_EQ(again->getShortcutTitle(6), QStringLiteral("Save take"));
}

TEST_F(PersonSession, on_a_german_keyboard_the_name_is_that_of_the_key_that_will_be_typed)
{
    stage::ChildProcess layout({ "setxkbmap", "de" }, studio.studio.environment());
    ASSERT_EQ(layout.wait(stage::milliseconds(10000)), 0);
    start();
    setup.open();
    setup.select(6);
    setup.person.press("ISO_Level3_Shift+q"); // this types @
    setup.assign();
    setup.select(7);
    setup.person.press("49"); // the keycode of the dead circumflex
    setup.assign();
    setup.save(path("german"));
    const auto set = saved("german.ZKCF");
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(text(*set, 6), QStringLiteral("Q"));
    EXPECT_EQ(text(*set, 7), QStringLiteral("^"));
    setup.ok();
    EXPECT_THAT(pressed(6), ElementsAre("down Q"));
    EXPECT_THAT(released(6), ElementsAre("up Q"));
    EXPECT_THAT(pressed(7), ElementsAre("down grave")) << "keys are named by position";
}

TEST_F(PersonSession, cancel_takes_back_what_was_assigned_and_named)
{
    studio.studio.assign({ "1", "A", "--title", "Record" });
    start();
    setup.open();
    setup.person.press("F5");
    setup.assign();
    setup.rename(1, "Changed");
    setup.save(path("changed"));
    setup.cancel();
    const auto changed = saved("changed.ZKCF");
    ASSERT_NE(changed, nullptr);
    EXPECT_EQ(text(*changed, 1), QStringLiteral("F5"));
    EXPECT_EQ(changed->getShortcutTitle(1), QStringLiteral("Changed"));

    EXPECT_THAT(pressed(1), ElementsAre("down A"));
    EXPECT_THAT(released(1), ElementsAre("up A"));
    setup.open();
    setup.save(path("kept"));
    const auto kept = saved("kept.ZKCF");
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(text(*kept, 1), QStringLiteral("A"));
    EXPECT_EQ(kept->getShortcutTitle(1), QStringLiteral("Record"));
}

TEST_F(PersonSession, a_broken_file_raises_the_alert_and_the_window_keeps_what_it_shows)
{
    std::ofstream(path("broken.ZKCF")) << "no set at all";
    start();
    setup.open();
    setup.select(2);
    setup.person.press("F5");
    setup.load(path("broken.ZKCF"));
    setup.person.waitUntilShown(Alert);
    setup.person.press("Return");
    setup.person.waitUntilGone(Alert);
    setup.assign();
    setup.ok();
    EXPECT_THAT(pressed(2), ElementsAre("down F5"));
    EXPECT_THAT(released(2), ElementsAre("up F5"));
}

TEST_F(PersonSession, a_file_is_replaced_only_after_the_question)
{
    std::ofstream(path("old.v1.ZKCF")) << "old";
    start();
    setup.open();
    setup.person.press("F5");
    setup.assign();
    setup.openSaveSheet();
    setup.person.type(path("old.v1"));
    setup.person.press("Return");
    setup.person.waitUntilThereAre(2, setup.SaveTitle);
    setup.person.press("alt+n");
    setup.person.waitUntilThereAre(1, setup.SaveTitle);
    EXPECT_EQ(read("old.v1.ZKCF"), nullptr) << "it was not to be replaced";

    setup.person.press("Return");
    setup.person.waitUntilThereAre(2, setup.SaveTitle);
    setup.person.press("alt+y");
    setup.person.waitUntilGone(setup.SaveTitle);
    const auto fresh = saved("old.v1.ZKCF");
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(text(*fresh, 1), QStringLiteral("F5"));
}

TEST_F(PersonSession, the_window_comes_up_where_it_was_left)
{
    start();
    setup.open();
    const auto moveTo = [&](int x, int y) {
        setup.person.moveWindow(setup.Title, x, y);
        return setup.person.windowAtRest(setup.Title);
    };
    const stage::Area left = moveTo(140, 160);
    setup.cancel();
    setup.open();
    EXPECT_EQ(setup.person.windowAtRest(setup.Title), left);
    EXPECT_EQ(quit(), 0);
    start();
    setup.open();
    EXPECT_EQ(setup.person.windowAtRest(setup.Title), left) << "after the next start";
}

} // namespace
} // namespace kestrel::test
