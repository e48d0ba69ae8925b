#include "tests/end-to-end/AccessibleObject.h"
#include "tests/end-to-end/RunningStudio.h"
#include "tools/stage/Patience.h"
#include "tools/stage/SetupWindowOnScreen.h"

#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

using stage::Area;
using stage::Colour;
using stage::SetupPlaces::Place;
using testing::HasSubstr;

constexpr stage::milliseconds Timeout { 10000 };

// The colours of lamps, of the marks, and of engraved words.
bool isAmber(Colour colour)
{
    return colour.red > 120 && colour.red > colour.blue + 60;
}
bool isGlow(Colour colour)
{
    return colour.red > colour.blue + 15;
}
bool isPlate(Colour colour)
{
    return colour.red == 38 && colour.green == 34 && colour.blue == 28;
}
bool isLight(Colour colour)
{
    return colour.red > 120 && colour.green > 120 && colour.blue > 110;
}

// A user at the setup window with keyboard and eyes, beside a screen reader. Places are in the
// window's content. The program needs no console for this.
class SetupExplainsItself : public testing::Test {
protected:
    // The first key has two shortcuts and a name, the second key one shortcut.
    void SetUp() override
    {
        studio.studio.assign({ "1", "A", "⌘K", "--title", "Record" });
        studio.studio.assign({ "2", "F3" });
        studio.startKestrel();
        choose();
    }
    // A second start of the program opens the window as the menu does.
    void choose()
    {
        EXPECT_EQ(studio.studio.start("kestrel")->wait(Timeout), 0);
        setup.person.waitUntilShown(setup.Title);
        const auto program = AccessibleObject::desktop(bus).child("kestrel");
        window = program.value().child(setup.Title);
        ASSERT_TRUE(window);
    }

    [[nodiscard]] AccessibleObject find(const std::string& name) const
    {
        const auto found = window->child(name);
        if (!found)
            throw std::runtime_error("the window has no " + name);
        return *found;
    }
    [[nodiscard]] AccessibleObject key(int number, const std::string& name = {}) const
    {
        return find(
            "User-assignable button " + std::to_string(number) + (name.empty() ? "" : ", " + name));
    }
    [[nodiscard]] static bool comesTrue(const std::function<bool()>& holds)
    {
        return stage::comesTrue(holds, Timeout);
    }
    [[nodiscard]] static bool getsFocus(const AccessibleObject& object)
    {
        return comesTrue([&] { return object.hasState(AccessibleObject::Focused); });
    }
    // What the first field holds, once that is the text or the time has run out.
    [[nodiscard]] std::string held(const std::string& text) const
    {
        const AccessibleObject field = find("Shortcut 1");
        static_cast<void>(comesTrue([&] { return field.wholeText() == text; }));
        return field.wholeText();
    }
    [[nodiscard]] int count(const Area& part, bool (*wanted)(Colour)) const
    {
        const Area content = setup.person.windowAtRest(setup.Title);
        return stage::Screen(studio.studio.displayName())
            .count({ content.x + part.x, content.y + part.y, part.width, part.height }, wanted);
    }
    // The corners of a key in which the marks are.
    [[nodiscard]] static Area leftCorner(int key)
    {
        const Place middle = stage::SetupPlaces::button(key);
        return { middle.x - 35, middle.y - 35, 14, 14 };
    }
    [[nodiscard]] static Area rightCorner(int key)
    {
        const Place middle = stage::SetupPlaces::button(key);
        return { middle.x + 21, middle.y - 35, 14, 14 };
    }
    [[nodiscard]] bool comesToShowMark(const Area& corner)
    {
        return comesTrue([&] { return count(corner, isPlate) > 20; });
    }
    [[nodiscard]] bool comesToShowNoMark(const Area& corner)
    {
        return comesTrue([&] { return count(corner, isPlate) == 0; });
    }

    int argumentCount = 0;
    QCoreApplication application { argumentCount, nullptr };
    RunningStudio studio { { .tray = false, .sessionBus = true } };
    QDBusConnection bus = AccessibleObject::busOf(studio.studio.sessionBus().address());
    stage::SetupWindowOnScreen setup { studio.studio };
    std::optional<AccessibleObject> window;
};

TEST_F(SetupExplainsItself, shift_tapped_twice_goes_on_from_a_capture_field_and_types_nothing)
{
    const AccessibleObject first = find("Shortcut 1");
    ASSERT_TRUE(getsFocus(first));
    setup.person.press("Tab");
    ASSERT_EQ(held("TAB"), "TAB") << "the field takes the key that leaves other controls";
    setup.person.press("Shift_L");
    setup.person.pressTwice("shift+b");
    ASSERT_EQ(held("⇪+B"), "⇪+B");
    EXPECT_TRUE(first.hasState(AccessibleObject::Focused)) << "Shift was tapped once, or not alone";

    setup.person.pressTwice("Shift_L");
    EXPECT_TRUE(getsFocus(find("Clear shortcut 1")));
    EXPECT_EQ(first.wholeText(), "⇪+B");
    setup.person.press("Tab");
    EXPECT_TRUE(getsFocus(find("Shortcut 2")));
}

TEST_F(SetupExplainsItself, alt_tapped_twice_goes_back_to_the_key_where_F2_and_Return_rename)
{
    const AccessibleObject first = find("Shortcut 1");
    ASSERT_TRUE(getsFocus(first));
    setup.person.press("Alt_L");
    setup.person.press("F2");
    ASSERT_EQ(held("F2"), "F2") << "a capture field renames nothing";
    setup.person.pressTwice("Alt_L");
    EXPECT_TRUE(getsFocus(key(1, "Record")));

    setup.person.press("F2");
    ASSERT_TRUE(getsFocus(find("Name of button 1")));
    setup.person.type("Punch in");
    setup.person.press("Return");
    EXPECT_TRUE(getsFocus(key(1, "Punch in")));
    setup.person.press("Return");
    ASSERT_TRUE(getsFocus(find("Name of button 1")));
    setup.person.type("Nothing");
    setup.person.press("Escape");
    EXPECT_TRUE(getsFocus(key(1, "Punch in")));
}

TEST_F(SetupExplainsItself, a_key_that_is_left_without_assign_is_marked_until_its_next_edit)
{
    ASSERT_TRUE(getsFocus(find("Shortcut 1")));
    ASSERT_TRUE(comesToShowNoMark(leftCorner(1)));
    setup.person.press("F5");
    setup.select(3);
    EXPECT_TRUE(comesToShowMark(leftCorner(1)));
    EXPECT_GT(count(leftCorner(1), isAmber), 4);
    EXPECT_THAT(key(1, "Record").description(), HasSubstr("Not assigned"));
    EXPECT_TRUE(comesToShowNoMark(leftCorner(3)));

    setup.select(1);
    EXPECT_TRUE(getsFocus(find("Shortcut 1")));
    EXPECT_TRUE(comesToShowMark(leftCorner(1))) << "looking at a key is no edit";
    setup.person.press("F6");
    EXPECT_TRUE(comesToShowNoMark(leftCorner(1)));
    EXPECT_THAT(key(1, "Record").description(), Not(HasSubstr("Not assigned")));
}

TEST_F(SetupExplainsItself, keys_with_the_same_shortcut_are_marked_as_long_as_both_have_it)
{
    ASSERT_TRUE(comesToShowNoMark(rightCorner(2)));
    setup.select(4);
    ASSERT_EQ(held(""), "");
    setup.person.press("F3");
    EXPECT_EQ(held("F3"), "F3");
    EXPECT_TRUE(comesToShowNoMark(rightCorner(2))) << "it is not assigned yet";
    setup.assign();
    EXPECT_TRUE(comesToShowMark(rightCorner(2)));
    EXPECT_TRUE(comesToShowMark(rightCorner(4)));
    EXPECT_TRUE(comesToShowNoMark(rightCorner(1)));
    EXPECT_THAT(key(2).description(), HasSubstr("F3 is also on U4"));
    EXPECT_THAT(key(4).description(), HasSubstr("F3 is also on U2"));

    setup.clear(1);
    setup.assign();
    EXPECT_TRUE(comesToShowNoMark(rightCorner(2)));
    EXPECT_TRUE(comesToShowNoMark(rightCorner(4)));
    EXPECT_EQ(key(2).description(), "F3");
}

TEST_F(SetupExplainsItself, the_heading_shows_and_announces_the_key_that_is_edited)
{
    const Area number { 495, 61, 24, 13 };
    const int first = count(number, isAmber);
    stage::ChildProcess changes({ "dbus-monitor", "--address",
        AccessibleObject::tellChanges(bus, "object:property-change:accessible-name"),
        "type='signal',interface='org.a11y.atspi.Event.Object',member='PropertyChange'" });
    ASSERT_TRUE(changes.waitForLineWith("NameAcquired", Timeout));
    const AccessibleObject heading = find("Shortcuts · U1");
    EXPECT_EQ(heading.role(), "heading");
    EXPECT_GT(first, 10);
    setup.select(12);
    EXPECT_TRUE(changes.waitForLineWith("path=" + heading.path() + ";", Timeout));
    EXPECT_EQ(heading.name(), "Shortcuts · U12");
    EXPECT_TRUE(comesTrue([&] { return count(number, isAmber) > first; }));
}

TEST_F(SetupExplainsItself, assign_glows_while_something_waits_for_it)
{
    const Area rim { 535, 306, 5, 26 }; // left of the button
    const AccessibleObject assign = find("Assign");
    ASSERT_TRUE(getsFocus(find("Shortcut 1")));
    EXPECT_FALSE(assign.hasState(AccessibleObject::Enabled));
    EXPECT_EQ(count(rim, isGlow), 0);
    setup.person.press("F5");
    EXPECT_TRUE(comesTrue([&] { return count(rim, isGlow) > 30; }));
    EXPECT_TRUE(assign.hasState(AccessibleObject::Enabled));
    setup.select(3); // nothing was typed for this one
    EXPECT_TRUE(comesTrue([&] { return count(rim, isGlow) == 0; }));
    setup.person.press("F5");
    EXPECT_TRUE(comesTrue([&] { return count(rim, isGlow) > 30; }));
    setup.assign();
    EXPECT_TRUE(comesTrue([&] { return count(rim, isGlow) == 0; }));
    EXPECT_FALSE(assign.hasState(AccessibleObject::Enabled));
}

// "Alt" and "Super" as they are engraved on the keys of this keyboard.
TEST_F(SetupExplainsItself, the_legend_names_the_modifiers_as_they_are_engraved_here)
{
    const std::vector<std::string> names = window->childNames();
    EXPECT_THAT(names, testing::IsSupersetOf({ "⇪ Shift", "⌥ Alt", "^ Control", "⌘ Super" }));
    EXPECT_GT(count({ 519, 357, 60, 18 }, isLight), 20) << "Alt";
    EXPECT_GT(count({ 519, 376, 60, 18 }, isLight), 30) << "Super";
    EXPECT_EQ(count({ 560, 357, 50, 18 }, isLight), 0) << "Option would reach further";
}

} // namespace
} // namespace kestrel::test
