#include "tests/shortcut/FieldBench.h"

#include <QTest>

namespace kestrel::test {
namespace {

TEST(ClearButton, a_click_empties_the_field_disables_the_button_and_gives_the_field_the_focus)
{
    FieldBench bench;
    activate(bench.window);
    press(bench.field(1), Keys::F5);
    bench.actions.clear();
    NotificationCounter counter(bench.center, NotificationName::hideUserAssignEditBox);
    click(bench.clear(1));
    EXPECT_EQ(bench.record(1), (ArchiveArray { 0, 0, QString(), 0 }));
    EXPECT_EQ(bench.field(1).stringValue(), u"");
    EXPECT_EQ(bench.actions, std::vector { 1 });
    EXPECT_FALSE(bench.clear(1).isEnabled());
    EXPECT_TRUE(bench.field(1).hasFocus());
    EXPECT_EQ(counter.objects, (std::vector<const QObject*> { &bench.clear(1), &bench.field(1) }));
}

TEST(ClearButton, releasing_outside_clears_nothing)
{
    FieldBench bench;
    press(bench.field(1), Keys::F5);
    bench.actions.clear();
    NotificationCounter counter(bench.center, NotificationName::hideUserAssignEditBox);
    press(bench.clear(1), Qt::LeftButton, { 5, 5 });
    EXPECT_TRUE(bench.clear(1).isDown());
    release(bench.clear(1), Qt::LeftButton, { 5, 50 });
    EXPECT_EQ(bench.field(1).stringValue(), u"F5");
    EXPECT_EQ(bench.actions, std::vector<int>());
    EXPECT_EQ(counter.objects, (std::vector<const QObject*> { &bench.clear(1) }));
}

TEST(ClearButton, nothing_is_cleared_before_the_mouse_is_released)
{
    FieldBench bench;
    press(bench.field(1), Keys::F5);
    press(bench.clear(1), Qt::LeftButton, { 5, 5 });
    EXPECT_EQ(bench.field(1).stringValue(), u"F5");
    release(bench.clear(1), Qt::LeftButton, { 6, 6 });
    EXPECT_EQ(bench.field(1).stringValue(), u"");
}

TEST(ClearButton, the_action_comes_before_the_text_goes_and_the_button_is_disabled)
{
    FieldBench bench;
    press(bench.field(1), Keys::F5);
    int actions = 0;
    bench.field(1).setAction([&] {
        EXPECT_FALSE(bench.field(1).isEntryShortcut());
        EXPECT_EQ(bench.field(1).stringValue(), u"F5");
        EXPECT_TRUE(bench.clear(1).isEnabled());
        ++actions;
    });
    click(bench.clear(1));
    EXPECT_EQ(actions, 1);
}

TEST(ClearButton, a_button_that_is_disabled_before_the_release_clears_nothing)
{
    FieldBench bench;
    press(bench.field(1), Keys::F5);
    press(bench.clear(1), Qt::LeftButton, { 5, 5 });
    bench.clear(1).setEnabled(false);
    release(bench.clear(1), Qt::LeftButton, { 5, 5 });
    EXPECT_EQ(bench.field(1).stringValue(), u"F5");
}

TEST(ClearButton, a_disabled_button_still_closes_rename_boxes_and_clears_nothing)
{
    FieldBench bench;
    press(bench.field(1), Keys::F5);
    bench.clear(1).setEnabled(false);
    NotificationCounter counter(bench.center, NotificationName::hideUserAssignEditBox);
    click(bench.clear(1));
    EXPECT_EQ(counter.objects, (std::vector<const QObject*> { &bench.clear(1) }));
    EXPECT_EQ(bench.field(1).stringValue(), u"F5");
}

TEST(ClearButton, without_a_field_it_only_closes_rename_boxes)
{
    FieldBench bench;
    ClearButton button({ 0, 0, 56, 31 }, bench.services);
    NotificationCounter counter(bench.center, NotificationName::hideUserAssignEditBox);
    click(button);
    EXPECT_EQ(counter.objects, (std::vector<const QObject*> { &button }));
    EXPECT_TRUE(button.isEnabled());
}

TEST(ClearButton, a_button_that_the_action_has_hidden_does_not_move_the_focus)
{
    FieldBench bench;
    activate(bench.window);
    press(bench.field(1), Keys::F5);
    bench.field(0).makeFirstResponder();
    bench.field(1).setAction([&] { bench.clear(1).hide(); });
    click(bench.clear(1));
    EXPECT_TRUE(bench.field(0).hasFocus());
}

TEST(ClearButton, the_space_bar_clears_as_a_click_does)
{
    FieldBench bench;
    activate(bench.window);
    press(bench.field(1), Keys::F5);
    bench.clear(1).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&bench.clear(1), Qt::Key_Space);
    EXPECT_EQ(bench.field(1).stringValue(), u"");
    EXPECT_TRUE(bench.field(1).hasFocus());
}

TEST(ClearButton, other_mouse_buttons_do_nothing)
{
    FieldBench bench;
    press(bench.field(1), Keys::F5);
    NotificationCounter counter(bench.center, NotificationName::hideUserAssignEditBox);
    press(bench.clear(1), Qt::RightButton, { 5, 5 });
    release(bench.clear(1), Qt::RightButton, { 5, 5 });
    EXPECT_EQ(counter.objects.size(), 0U);
    EXPECT_EQ(bench.field(1).stringValue(), u"F5");
}

} // namespace
} // namespace kestrel::test
