#include "tests/end-to-end/AccessibleEvents.h"
#include "tests/end-to-end/AccessibleObject.h"
#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/SetupWindowOnScreen.h"

#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <thread>
#include <vector>

namespace kestrel::test {
namespace {

using testing::Contains;

bool comesTrue(const std::function<bool()>& condition)
{
    for (int look = 0; look < 2000; ++look) {
        if (condition())
            return true;
        std::this_thread::sleep_for(stage::milliseconds(10));
    }
    return false;
}

// A user with a screen reader, at the real program.
class ScreenReader : public testing::Test {
protected:
    [[nodiscard]] AccessibleObject window(const std::string& title)
    {
        const auto program = AccessibleObject::desktop(bus).child("kestrel");
        if (!program)
            throw std::runtime_error("kestrel is not on the accessibility bus");
        const auto found = program->child(title);
        if (!found)
            throw std::runtime_error("no window " + title + " on the accessibility bus");
        return *found;
    }

    int argumentCount = 0;
    QCoreApplication application { argumentCount, nullptr };
    RunningStudio studio { { .sessionBus = true } };
    QDBusConnection bus = AccessibleObject::busOf(studio.studio.sessionBus().address());
    stage::SetupWindowOnScreen setup { studio.studio };
};

TEST_F(ScreenReader, reads_the_panel_and_works_the_setup_window)
{
    studio.studio.assign({ "1", "F3", "A", "--title", "Record" });
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());

    setup.person.chooseFromTray('p');
    const AccessibleObject panelWindow = window("Plug-in Panel");
    EXPECT_EQ(panelWindow.role(), "frame");
    const AccessibleObject panel = panelWindow.child("Plug-in panel").value();
    for (const char* command :
        { "display 0 Threshold", "display 4 -24.0 dB", "knob 1 71", "lamp 6 on" })
        studio.console->writeLine(command);
    const AccessibleObject knob = panel.child("Threshold, −24.0 dB").value();
    EXPECT_EQ(knob.role(), "dial");
    EXPECT_TRUE(comesTrue([&] { return knob.description() == "lamp 7 of 11, lower lamp lit"; }));
    EXPECT_EQ(knob.value(), 7);
    const AccessibleObject bypass = panel.child("BYPASS").value();
    EXPECT_TRUE(comesTrue([&] { return bypass.description() == "lit"; }));
    EXPECT_TRUE(bypass.hasState(AccessibleObject::Checked));
    EXPECT_EQ(bypass.value(), 1);
    EXPECT_EQ(panel.child("COMPARE")->description(), "unlit");

    setup.open();
    const AccessibleObject window = this->window("User Assignable Setup");
    EXPECT_EQ(window.role(), "frame");
    const auto names = window.childNames();
    ASSERT_EQ(names.size(), 31U);
    EXPECT_EQ(names[0], "Load");
    EXPECT_EQ(names[2], "User assignable keys");
    EXPECT_EQ(names[3], "User-assignable button 1, Record");
    EXPECT_EQ(names[30], "OK");
    EXPECT_EQ(window.child("Shortcuts · U1")->role(), "heading");

    const AccessibleObject second = window.child("Shortcut 2").value();
    EXPECT_EQ(second.role(), "text");
    EXPECT_TRUE(second.hasState(AccessibleObject::Editable));
    EXPECT_EQ(second.wholeText(), "A");
    EXPECT_TRUE(second.grabFocus());
    EXPECT_TRUE(comesTrue([&] { return second.hasState(AccessibleObject::Focused); }));
    const AccessibleObject alert = second.children().at(0);
    EXPECT_EQ(alert.role(), "alert message");
    EXPECT_FALSE(alert.hasState(AccessibleObject::Showing));
    setup.person.press("F5"); // the first field holds a function key already
    EXPECT_TRUE(comesTrue([&] { return alert.hasState(AccessibleObject::Showing); }));
    EXPECT_EQ(alert.name(), "Not Available");

    struct Key {
        const char* name;
        const char* shown;
    };
    for (const Key& key :
        { Key { "Tab", "TAB" }, Key { "Escape", "ESC" }, Key { "Return", "RETURN" } }) {
        EXPECT_TRUE(second.grabFocus());
        setup.person.press(key.name);
        EXPECT_TRUE(comesTrue([&] { return second.wholeText() == key.shown; })) << key.name;
        EXPECT_TRUE(second.hasState(AccessibleObject::Focused)) << "the field takes the key itself";
        const AccessibleObject cancel = window.child("Cancel").value();
        EXPECT_TRUE(cancel.grabFocus());
        EXPECT_TRUE(comesTrue([&] { return cancel.hasState(AccessibleObject::Focused); }))
            << key.name;
    }

    const AccessibleObject key = window.child("User-assignable button 1, Record").value();
    EXPECT_THAT(key.actions(), Contains("rename"));
    EXPECT_TRUE(key.act("rename"));
    EXPECT_TRUE(window.child("Name of button 1").has_value());
    setup.person.type("Punch in");
    setup.person.press("Return");
    EXPECT_TRUE(window.child("User-assignable button 1, Punch in").has_value());
    EXPECT_EQ(studio.terminateKestrel(), 0);
}

TEST_F(ScreenReader, hears_of_a_turning_knob_twice_a_second_at_most_and_of_its_last_value)
{
    constexpr auto ShortestPause = stage::milliseconds(450); // 500 between sentences, and transport
    const AccessibleEvents events(bus);
    studio.startEverything();
    ASSERT_TRUE(studio.isAnswered());
    setup.person.chooseFromTray('p');
    const AccessibleObject panel = window("Plug-in Panel").child("Plug-in panel").value();
    const auto comesToSay = [&](const std::string& sentence) {
        return comesTrue([&] {
            QCoreApplication::processEvents();
            return panel.description() == sentence;
        });
    };
    studio.console->writeLine("display 0 Threshold");
    ASSERT_TRUE(comesToSay("Threshold"));
    for (int value = 1; value <= 60; ++value) {
        studio.console->writeLine("display 4 -" + std::to_string(value) + ".0 dB");
        std::this_thread::sleep_for(stage::milliseconds(50));
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(comesToSay("Threshold −60.0 dB"));

    const auto of = [](const AccessibleObject& object, const auto& changes) {
        std::vector<AccessibleEvents::Change> its;
        std::ranges::copy_if(changes, std::back_inserter(its),
            [&](const auto& change) { return change.path.toStdString() == object.path(); });
        return its;
    };
#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
    // Screen readers speak a notification that comes to be shown.
    const AccessibleObject notification = panel.children().back();
    EXPECT_EQ(notification.role(), "notification");
    EXPECT_EQ(notification.name(), "Threshold −60.0 dB");
    EXPECT_TRUE(notification.hasState(AccessibleObject::Showing));
    EXPECT_TRUE(comesTrue([&] {
        QCoreApplication::processEvents();
        return of(notification, events.shown()).size() == of(panel, events.descriptions()).size();
    }));
#endif
    QCoreApplication::processEvents();
    const auto sentences = of(panel, events.descriptions());
    EXPECT_GE(sentences.size(), 5U) << "3 seconds of changes";
    for (std::size_t i = 1; i < sentences.size(); ++i)
        EXPECT_GE(sentences[i].time - sentences[i - 1].time, ShortestPause) << i;
    EXPECT_EQ(studio.terminateKestrel(), 0);
}

} // namespace
} // namespace kestrel::test
