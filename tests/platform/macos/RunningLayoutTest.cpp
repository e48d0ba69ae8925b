#include "platform/RunningLayout.h"

#include "tests/platform/macos/stand-ins/CFObject.h"
#include "tests/platform/macos/stand-ins/Calls.h"
#include "tests/platform/macos/stand-ins/InputSources.h"

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

constexpr KeyCode KeyS = 1;
constexpr KeyCode KeyE = 14;
constexpr KeyCode BesideOne = 50;
constexpr KeyCode BesideLeftShift = 10;

const Layout American { { { KeyS, { u"s", u"S" } }, { BesideOne, { u"`", u"~" } },
    { BesideLeftShift, { u"§", u"±" } } } };
const Layout German { { { KeyS, { u"s", u"S" } }, { KeyE, { u"e", u"E" } },
    { BesideOne, { u"^", u"°", true } }, { BesideLeftShift, { u"<", u">" } } } };

class RunningLayoutTest : public testing::Test {
protected:
    RunningLayoutTest() { inputSources() = {}; }
    ~RunningLayoutTest() override
    {
        calls() = {};
        inputSources() = {};
        EXPECT_EQ(CFObject::count(), m_objectsBefore) << "an object was not released";
    }

    // What the key types without and with Shift, or "none".
    static std::string typed(RunningLayout& layout, KeyCode key)
    {
        const auto characters = layout.charactersOf(key);
        return characters ? characters->plain + " " + characters->withShift : "none";
    }
    [[nodiscard]] int objectsHeld() const { return CFObject::count() - m_objectsBefore; }

private:
    int m_objectsBefore = CFObject::count();
};

TEST_F(RunningLayoutTest, tells_what_a_key_types_without_and_with_shift)
{
    inputSources().current = { American };
    const auto layout = runningLayout();
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(typed(*layout, KeyS), "s S");
    EXPECT_EQ(typed(*layout, BesideLeftShift), "§ ±");
}

TEST_F(RunningLayoutTest, a_key_that_the_layout_does_not_have_has_no_characters)
{
    inputSources().current = { American };
    const auto layout = runningLayout();
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(typed(*layout, KeyE), "none");
    calls().failing = "UCKeyTranslate";
    EXPECT_EQ(typed(*layout, KeyS), "none");
}

TEST_F(RunningLayoutTest, a_key_that_types_a_control_character_has_no_text)
{
    constexpr KeyCode Menu = 110;
    inputSources().current = { Layout { { { Menu, { u"\x10", u"\x10" } } } } };
    const auto layout = runningLayout();
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(typed(*layout, Menu), " ");
}

TEST_F(RunningLayoutTest, a_dead_key_types_its_accent_and_changes_no_other_key)
{
    inputSources().current = { German };
    const auto layout = runningLayout();
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(typed(*layout, BesideOne), "^ °");
    EXPECT_EQ(typed(*layout, KeyE), "e E");
}

TEST_F(RunningLayoutTest, keys_lie_as_on_the_keyboard_that_was_last_used)
{
    inputSources().current = { German };
    const auto layout = runningLayout();
    ASSERT_NE(layout, nullptr);
    inputSources().keyboardType = InputSources::Iso;
    EXPECT_EQ(typed(*layout, BesideOne), "< >");
    EXPECT_EQ(typed(*layout, BesideLeftShift), "^ °");
}

TEST_F(RunningLayoutTest, the_layout_for_latin_text_is_asked_if_the_current_one_has_no_data)
{
    inputSources().current = InputSources::Source();
    inputSources().asciiCapable = { German };
    const auto layout = runningLayout();
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(typed(*layout, BesideOne), "^ °");
}

TEST_F(RunningLayoutTest, the_current_layout_comes_before_the_one_for_latin_text)
{
    inputSources().current = { American };
    inputSources().asciiCapable = { German };
    const auto layout = runningLayout();
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(typed(*layout, BesideOne), "` ~");
}

TEST_F(RunningLayoutTest, there_is_none_without_layouts_or_without_their_data)
{
    EXPECT_EQ(runningLayout(), nullptr);
    inputSources().current = InputSources::Source();
    EXPECT_EQ(runningLayout(), nullptr);
    inputSources().asciiCapable = InputSources::Source();
    EXPECT_EQ(runningLayout(), nullptr);
}

TEST_F(RunningLayoutTest, holds_the_data_of_the_layout_and_nothing_else)
{
    inputSources().current = { German };
    auto layout = runningLayout();
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(objectsHeld(), 1);
    EXPECT_EQ(typed(*layout, KeyS), "s S");
    EXPECT_EQ(objectsHeld(), 1);
    layout.reset();
    EXPECT_EQ(objectsHeld(), 0);
}

TEST_F(RunningLayoutTest, text_that_is_no_UTF_16_is_none)
{
    inputSources().current = { Layout { { { KeyS, { u"\xD800", u"S" } } } } };
    const auto layout = runningLayout();
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(typed(*layout, KeyS), "none");
}

} // namespace
} // namespace kestrel::test
