#include "app/NoticeItems.h"

#include "tests/fakes/FakeSystem.h"

#include <QAction>
#include <QMenu>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace kestrel::test {
namespace {

using testing::ElementsAre;

// A menu with one item that the desktop is about to show.
class NoticeMenu {
public:
    NoticeMenu() { menu.addAction(QStringLiteral("Quit")); }

    // Returns the text of each item, in brackets if it is disabled, and "-" for a separator.
    [[nodiscard]] std::vector<std::string> look()
    {
        emit menu.aboutToShow();
        std::vector<std::string> items;
        for (const QAction* const item : menu.actions()) {
            const std::string text = item->isSeparator() ? "-" : item->text().toStdString();
            items.push_back(item->isEnabled() ? text : "[" + text + "]");
        }
        return items;
    }

    QMenu menu;
    FakeNotices notices;
};

TEST(NoticeItems, without_notices_the_menu_stays_as_it_is)
{
    NoticeMenu bench;
    const NoticeItems items(bench.menu, bench.notices);
    EXPECT_THAT(bench.look(), ElementsAre("Quit"));
}

TEST(NoticeItems, notices_stand_at_the_top_in_their_order_above_a_separator)
{
    NoticeMenu bench;
    bench.notices.notices = { { "first", {} }, { "second", [] {} } };
    const NoticeItems items(bench.menu, bench.notices);
    EXPECT_EQ(bench.menu.actions().size(), 4) << "there before the menu is opened";
    EXPECT_THAT(bench.look(), ElementsAre("[first]", "second", "-", "Quit"));
}

TEST(NoticeItems, a_notice_comes_and_goes_with_its_reason)
{
    NoticeMenu bench;
    const NoticeItems items(bench.menu, bench.notices);
    bench.notices.notices = { { "missing", [] {} } };
    EXPECT_THAT(bench.look(), ElementsAre("missing", "-", "Quit"));
    bench.notices.notices.clear();
    EXPECT_THAT(bench.look(), ElementsAre("Quit"));
}

TEST(NoticeItems, nothing_moves_while_the_menu_is_open)
{
    NoticeMenu bench;
    NoticeItems items(bench.menu, bench.notices);
    emit bench.menu.aboutToShow();
    bench.notices.notices = { { "missing", [] {} } };
    items.refresh();
    EXPECT_EQ(bench.menu.actions().size(), 1);
    emit bench.menu.aboutToHide();
    items.refresh();
    EXPECT_EQ(bench.menu.actions().size(), 3);
}

TEST(NoticeItems, a_notice_that_stays_keeps_its_item)
{
    NoticeMenu bench;
    bench.notices.notices = { { "missing", [] {} } };
    const NoticeItems items(bench.menu, bench.notices);
    const auto before = bench.menu.actions();
    EXPECT_THAT(bench.look(), ElementsAre("missing", "-", "Quit"));
    EXPECT_EQ(bench.menu.actions(), before);
}

TEST(NoticeItems, choosing_a_notice_does_what_can_be_done_about_it)
{
    NoticeMenu bench;
    int asked = 0;
    bench.notices.notices = { { "missing", [&asked] { ++asked; } } };
    const NoticeItems items(bench.menu, bench.notices);
    bench.menu.actions().constFirst()->trigger();
    EXPECT_EQ(asked, 1);
}

TEST(NoticeItems, an_ampersand_is_shown_as_one)
{
    NoticeMenu bench;
    bench.notices.notices = { { "keys & panel", {} } };
    const NoticeItems items(bench.menu, bench.notices);
    EXPECT_THAT(bench.look(), ElementsAre("[keys && panel]", "-", "Quit"));
}

// Weights red, green and blue by their share in perceived brightness.
double luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other)
{
    const auto [dark, bright] = std::minmax({ luminance(one), luminance(other) });
    return (bright + 0.05) / (dark + 0.05);
}

TEST(NoticeItems, a_notice_that_cannot_be_chosen_can_be_read_in_light_and_in_dark)
{
    for (const auto& [text, back] :
        { std::pair { Qt::black, Qt::white }, std::pair { Qt::white, Qt::black } }) {
        NoticeMenu bench;
        QPalette palette;
        palette.setColor(QPalette::Text, text);
        palette.setColor(QPalette::Base, back);
        palette.setColor(QPalette::Disabled, QPalette::Text, back); // invisible
        bench.menu.setPalette(palette);
        const NoticeItems items(bench.menu, bench.notices);
        EXPECT_GT(
            contrast(bench.menu.palette().color(QPalette::Disabled, QPalette::Text), back), 5);
    }
}

} // namespace
} // namespace kestrel::test
