#include "tests/setup/SetupBench.h"

#include <QAccessible>
#include <QTest>

#include <functional>

namespace kestrel::test {
namespace {

// Keys 1 and 5 have shortcuts; the first is selected.
struct SelectionBench : SetupBench {
    SelectionBench()
    {
        give(1, 0, 0, 99, "F3");
        give(5, 0, 0, 96, "F5");
        open();
        activate(*controller.window());
    }
    // Returns the indexes of all buttons that are lit, such as "4".
    [[nodiscard]] std::string lit() const
    {
        std::string indexes;
        for (int i = 0; i < 12; ++i) {
            if (button(i).state() == UserAssignableButton::State::On)
                indexes += std::to_string(i);
        }
        return indexes;
    }
};

QAccessibleInterface& accessible(QWidget& widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

void toggleAsAssistiveTechnologyDoes(QWidget& widget)
{
    QAccessibleActionInterface* actions = accessible(widget).actionInterface();
    ASSERT_TRUE(actions->actionNames().contains(QAccessibleActionInterface::toggleAction()));
    actions->doAction(QAccessibleActionInterface::toggleAction());
}

const std::map<std::string, std::function<void(UserAssignableButton&)>> Ways {
    { "mouse", [](UserAssignableButton& button) { click(button); } },
    { "space bar", [](UserAssignableButton& button) { QTest::keyClick(&button, Qt::Key_Space); } },
    { "assistive technology", toggleAsAssistiveTechnologyDoes },
    { "click()", [](UserAssignableButton& button) { button.click(); } },
    { "toggle()", [](UserAssignableButton& button) { button.toggle(); } },
    { "setChecked()", [](UserAssignableButton& button) { button.setChecked(true); } },
};

TEST(Selection, whatever_the_way_one_key_is_lit_and_the_fields_and_assign_are_about_it)
{
    for (const auto& [way, select] : Ways) {
        SelectionBench bench;
        NotificationCounter counter(bench.center, NotificationName::refreshShortcutName);
        select(bench.button(4));
        EXPECT_EQ(bench.lit(), "4") << way;
        EXPECT_EQ(ButtonGroup::sharedInstance().currentButtonId(), 4) << way;
        EXPECT_EQ(bench.field(0).stringValue(), u"F5") << way;
        EXPECT_EQ(counter.objects, (std::vector<const QObject*> { &bench.button(4) })) << way;
        press(bench.field(0), Keys::Tab);
        bench.controller.assign();
        EXPECT_EQ(bench.workingText(5), u"TAB") << way;
        EXPECT_EQ(bench.workingText(1), u"F3") << way;
    }
}

TEST(Selection, whatever_the_way_the_selected_key_stays_selected_and_nothing_is_posted)
{
    for (const auto& [way, select] : Ways) {
        SelectionBench bench;
        NotificationCounter counter(bench.center, NotificationName::refreshShortcutName);
        select(bench.button(0));
        EXPECT_EQ(bench.lit(), "0") << way;
        EXPECT_EQ(counter.objects.size(), 0U) << way;
    }
    const SelectionBench bench;
    bench.button(0).setChecked(false);
    EXPECT_EQ(bench.lit(), "0");
}

TEST(Selection, whatever_the_way_the_rename_box_of_the_former_key_closes)
{
    for (const auto& [way, select] : Ways) {
        const SelectionBench bench;
        doubleClick(bench.button(0));
        ASSERT_NE(bench.button(0).editBox(), nullptr);
        select(bench.button(4));
        EXPECT_EQ(bench.button(0).editBox(), nullptr) << way;
    }
}

TEST(Selection, the_twelve_keys_are_radio_buttons_for_assistive_technology)
{
    const SelectionBench bench;
    for (int i = 0; i < 12; ++i) {
        const QAccessibleInterface& key = accessible(bench.button(i));
        EXPECT_EQ(key.role(), QAccessible::RadioButton) << i;
        EXPECT_EQ(key.state().checked, i == 0) << i;
    }
}

TEST(Selection, arrow_keys_go_from_the_selected_key_to_its_neighbour)
{
    const SelectionBench bench;
    bench.button(0).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&bench.button(0), Qt::Key_Down);
    EXPECT_EQ(bench.lit(), "4");
    EXPECT_EQ(bench.field(0).stringValue(), u"F5");
    EXPECT_TRUE(bench.button(4).hasFocus());
}

TEST(Selection, tab_still_reaches_every_key)
{
    const SelectionBench bench;
    bench.button(0).setFocus(Qt::TabFocusReason);
    click(bench.button(4));
    for (int i = 0; i < 12; ++i)
        EXPECT_TRUE(bench.button(i).focusPolicy() & Qt::TabFocus) << i;
}

TEST(Selection, a_new_window_starts_with_its_first_key_whatever_was_selected_before)
{
    {
        const SelectionBench former;
        click(former.button(7));
        ASSERT_EQ(ButtonGroup::sharedInstance().currentButtonId(), 7);
    }
    const SelectionBench bench;
    EXPECT_EQ(ButtonGroup::sharedInstance().currentButtonId(), 0);
    EXPECT_EQ(bench.lit(), "0");
    EXPECT_EQ(bench.field(0).stringValue(), u"F3");
}

} // namespace
} // namespace kestrel::test
