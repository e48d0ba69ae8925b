#include "tests/setup/SetupBench.h"

#include <QGuiApplication>
#include <QTest>

namespace kestrel::test {
namespace {

TEST(UserAssignableButton, a_click_turns_it_on_and_every_other_off)
{
    SetupBench bench;
    click(bench.button(4));
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(bench.button(i).state() == UserAssignableButton::State::On, i == 4) << i;
    EXPECT_EQ(ButtonGroup::sharedInstance().currentButtonId(), 4);
    EXPECT_EQ(bench.controller.userAssignableButtons()[11]->currentButtonId(), 4);
}

TEST(UserAssignableButton, a_click_that_changes_the_selection_posts_the_refresh_with_the_button)
{
    SetupBench bench;
    NotificationCounter counter(bench.center, NotificationName::refreshShortcutName);
    click(bench.button(4));
    EXPECT_EQ(counter.objects, (std::vector<const QObject*> { &bench.button(4) }));
}

TEST(UserAssignableButton, a_click_on_the_selected_button_changes_and_posts_nothing)
{
    SetupBench bench;
    NotificationCounter counter(bench.center, NotificationName::refreshShortcutName);
    click(bench.button(0));
    EXPECT_EQ(counter.objects.size(), 0U);
    EXPECT_EQ(bench.button(0).state(), UserAssignableButton::State::On);
    EXPECT_FALSE(bench.button(0).isDown());
}

TEST(UserAssignableButton, releasing_outside_keeps_the_selection_that_the_press_made)
{
    SetupBench bench;
    press(bench.button(4), Qt::LeftButton, { 5, 5 });
    release(bench.button(4), Qt::LeftButton, { -50, -50 });
    EXPECT_EQ(bench.button(4).state(), UserAssignableButton::State::On);
    EXPECT_EQ(bench.button(0).state(), UserAssignableButton::State::Off);
}

TEST(UserAssignableButton, the_space_bar_selects_as_a_click_does_and_never_toggles)
{
    SetupBench bench;
    bench.open();
    NotificationCounter counter(bench.center, NotificationName::refreshShortcutName);
    bench.button(3).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&bench.button(3), Qt::Key_Space);
    QTest::keyClick(&bench.button(3), Qt::Key_Space);
    EXPECT_EQ(bench.button(3).state(), UserAssignableButton::State::On);
    EXPECT_EQ(counter.objects.size(), 1U);
}

TEST(UserAssignableButton, its_shortcuts_are_counted_by_their_texts)
{
    SetupBench bench;
    EXPECT_EQ(bench.button(0).getEntryShortcutNum(), 0);
    const ButtonEntry entry = std::make_shared<ArchiveArray>(ArchiveArray {
        1, 1, QString("A"), 0, 1, 1, QString(), 0, 0, 0, QString("B"), 0, 0, 0, 7, 0 });
    bench.button(0).setShortcutArray(entry);
    EXPECT_EQ(bench.button(0).getEntryShortcutNum(), 2);
    entry->replace(14, QString("D"));
    EXPECT_EQ(bench.button(0).getEntryShortcutNum(), 3);
    bench.button(0).setShortcutArray(nullptr);
    EXPECT_EQ(bench.button(0).getEntryShortcutNum(), 0);
}

// Returns a name whose width is between `least` and `most`.
QString nameOfWidth(double least, double most)
{
    const QFontMetricsF metrics(UserAssignableButton::createFontAttribute().font);
    for (int wide = 0; wide < 12; ++wide) {
        for (int narrow = 0; narrow < 30; ++narrow) {
            QString name = QString(wide, 'W') + QString(narrow, 'i') + u'.';
            const double width = metrics.horizontalAdvance(name);
            if (width > least && width < most)
                return name;
        }
    }
    return {};
}

TEST(UserAssignableButton, a_name_a_fraction_too_wide_for_one_line_is_cut_after_it)
{
    SetupBench bench;
    const auto belowTheLine = [&](const QString& name) {
        bench.button(1).setUniqueName(name);
        return bench.button(1).grab().toImage().copy(0, 48, 78, 30);
    };
    const QString name = nameOfWidth(66, 67);
    ASSERT_FALSE(name.isEmpty());
    EXPECT_EQ(belowTheLine(name), belowTheLine("i"));
}

// The first column in which two pictures of the same size differ; their width if they are equal.
int firstDifferentColumn(const QImage& left, const QImage& right)
{
    for (int x = 0; x < left.width(); ++x) {
        for (int y = 0; y < left.height(); ++y) {
            if (left.pixel(x, y) != right.pixel(x, y))
                return x;
        }
    }
    return left.width();
}

TEST(UserAssignableButton, a_right_to_left_name_of_several_lines_starts_at_the_left_like_any_other)
{
    SetupBench bench;
    const auto shown = [&](const QString& name) {
        bench.button(1).setUniqueName(name);
        return bench.button(1).grab().toImage();
    };
    const QImage bare = shown(" ");
    const int latin = firstDifferentColumn(shown(QString(9, u'H')), bare);
    const int hebrew = firstDifferentColumn(shown(QString(12, QChar(0x05D0))), bare);
    EXPECT_NEAR(latin, 6, 1);
    EXPECT_NEAR(hebrew, latin, 1);
}

TEST(UserAssignableButton, its_text_stays_on_its_side_in_a_right_to_left_interface)
{
    SetupBench bench;
    UserAssignableButton& button = bench.button(1);
    for (const QString& name : { QString(9, u'H'), QString(12, QChar(0x05D0)) }) {
        button.setUniqueName(name);
        const QImage leftToRight = button.grab().toImage();
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        EXPECT_EQ(button.grab().toImage(), leftToRight) << name.toStdString();
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    }
}

TEST(UserAssignableButton, without_name_and_entry_it_shows_its_bare_face)
{
    SetupBench bench;
    UserAssignableButton& button = bench.button(1);
    button.setUniqueName(" ");
    const QImage bare = button.grab().toImage();
    button.setUniqueName({});
    EXPECT_NE(button.grab().toImage(), bare);
    button.setShortcutArray(nullptr);
    EXPECT_EQ(button.grab().toImage(), bare);
}

TEST(UserAssignableButton, empty_records_leave_no_gap_between_its_shortcuts)
{
    SetupBench bench;
    UserAssignableButton& button = bench.button(1);
    const QString none;
    const auto shown = [&](const ArchiveArray& entry) {
        button.setShortcutArray(std::make_shared<ArchiveArray>(entry));
        return button.grab().toImage();
    };
    EXPECT_EQ(shown({ 0, 0, none, 0, 0, 0, QString("A"), 0, 0, 0, none, 0, 0, 0, QString("B"), 0 }),
        shown({ 0, 0, QString("A"), 0, 0, 0, QString("B"), 0, 0, 0, none, 0, 0, 0, none, 0 }));
}

TEST(UserAssignableButton, its_text_is_centred_again_after_a_name_of_several_lines)
{
    SetupBench bench;
    bench.button(1).setUniqueName("Consolidate clip and export");
    bench.button(1).grab();
    EXPECT_EQ(bench.button(1).attributes().alignment, Qt::AlignHCenter);
}

TEST(ButtonGroup, changing_the_selection_closes_rename_boxes)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.open();
    doubleClick(bench.button(0));
    ASSERT_NE(bench.button(0).editBox(), nullptr);
    ButtonGroup::sharedInstance().setCurrentButtonId(3);
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
    EXPECT_EQ(bench.button(3).state(), UserAssignableButton::State::On);
}

TEST(ButtonGroup, an_index_without_a_button_turns_all_off_and_is_kept)
{
    SetupBench bench;
    ButtonGroup::sharedInstance().setCurrentButtonId(40);
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(bench.button(i).state(), UserAssignableButton::State::Off);
    EXPECT_EQ(ButtonGroup::sharedInstance().currentButtonId(), 40);
    bench.controller.assign();
    bench.controller.refreshShortcutText();
    EXPECT_FALSE(bench.mayAssign());
}

TEST(ButtonGroup, controllers_leave_it_when_destroyed)
{
    {
        SetupBench bench;
        click(bench.button(7));
        EXPECT_EQ(ButtonGroup::sharedInstance().buttonControllers().size(), 12u);
    }
    EXPECT_TRUE(ButtonGroup::sharedInstance().buttonControllers().empty());
    ButtonGroup::sharedInstance().setCurrentButtonId(0);
    SetupBench bench;
    EXPECT_EQ(bench.button(0).state(), UserAssignableButton::State::On);
    EXPECT_EQ(ButtonGroup::sharedInstance().currentButtonId(), 0);
}

TEST(UserAssignableButton, other_mouse_buttons_neither_select_nor_rename)
{
    SetupBench bench;
    bench.give(1, 0, 0, 0, "A");
    bench.open();
    press(bench.button(4), Qt::RightButton, { 5, 5 });
    release(bench.button(4), Qt::RightButton, { 5, 5 });
    EXPECT_EQ(ButtonGroup::sharedInstance().currentButtonId(), 0);
    QTest::mouseDClick(&bench.button(0), Qt::RightButton);
    EXPECT_EQ(bench.button(0).editBox(), nullptr);
}

TEST(UserAssignableButton, an_empty_name_is_no_name)
{
    SetupBench bench;
    bench.button(1).setUniqueName(QString());
    const QImage unnamed = bench.button(1).grab().toImage();
    bench.button(1).setUniqueName(QStringLiteral(""));
    EXPECT_EQ(bench.button(1).grab().toImage(), unnamed);
}

} // namespace
} // namespace kestrel::test
