#include "panel/PanelPlacement.h"
#include "tests/fakes/FakeSystem.h"

#include <QApplication>
#include <QResizeEvent>
#include <QScreen>
#include <QTest>
#include <QWidget>

#include <gmock/gmock.h>

#include <functional>
#include <vector>

namespace kestrel::test {

namespace {
class Placement : public testing::Test {
protected:
    Placement()
    {
        window.setMinimumSize(391, 110);
        window.resize(782, 220);
    }

    void store(std::string_view text)
    {
        const DefaultsStore::Bytes bytes(text.begin(), text.end());
        defaults.setData(PanelPlacement::Key, bytes);
    }
    [[nodiscard]] std::string onDisk() const
    {
        const auto found = defaults.stored.find(std::string(PanelPlacement::Key));
        return found == defaults.stored.end()
            ? "nothing"
            : std::string(found->second.begin(), found->second.end());
    }

    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    FakeDefaultsStore defaults;
    QWidget window;
};
} // namespace

TEST_F(Placement, with_nothing_remembered_the_window_is_left_as_it_is)
{
    window.move(11, 12);
    PanelPlacement(window, defaults).restore();
    EXPECT_EQ(window.size(), QSize(782, 220));
    EXPECT_EQ(window.pos(), QPoint(11, 12));
    EXPECT_EQ(onDisk(), "nothing");
}

TEST_F(Placement, the_window_comes_back_where_it_was_and_as_large)
{
    ASSERT_GE(screen.width(), 620);
    store("30 40 587 165");
    PanelPlacement(window, defaults).restore();
    EXPECT_EQ(window.pos(), QPoint(30, 40));
    EXPECT_EQ(window.size(), QSize(587, 165));
}

TEST_F(Placement, a_height_that_does_not_go_with_the_width_is_corrected)
{
    store("30 40 587 400");
    PanelPlacement(window, defaults).restore();
    EXPECT_EQ(window.size(), QSize(587, 165));
}

TEST_F(Placement, a_width_below_the_minimum_is_raised)
{
    store("30 40 10 3");
    PanelPlacement(window, defaults).restore();
    EXPECT_EQ(window.size(), QSize(391, 110));
}

TEST_F(Placement, a_place_on_no_screen_is_brought_back)
{
    store("5000 6000 587 165");
    PanelPlacement(window, defaults).restore();
    EXPECT_TRUE(screen.contains(window.frameGeometry()));
    EXPECT_EQ(window.size(), QSize(587, 165));
}

TEST_F(Placement, a_window_on_a_screen_that_goes_or_shrinks_is_brought_back)
{
    PanelPlacement placement(window, defaults);
    placement.followScreens();
    QScreen* const screenThere = QGuiApplication::primaryScreen();
    const std::vector<std::function<void()>> changes {
        [&] { emit qGuiApp->screenRemoved(screenThere); },
        [&] { emit screenThere->availableGeometryChanged(screen); },
        [&] {
            // Makes the screen look like one that was added just now.
            QObject::disconnect(screenThere, nullptr, &placement, nullptr);
            emit qGuiApp->screenAdded(screenThere);
            emit screenThere->availableGeometryChanged(screen);
        },
    };
    for (const auto& change : changes) {
        window.move(5000, 6000);
        change();
        QApplication::processEvents();
        EXPECT_TRUE(screen.contains(window.geometry()));
    }
}

TEST_F(Placement, a_size_beyond_the_screen_is_brought_back_in_proportion)
{
    store("0 0 3128 880");
    PanelPlacement(window, defaults).restore();
    EXPECT_LE(window.width(), screen.width());
    EXPECT_EQ(window.height(), qRound(window.width() * 220 / 782.0));
}

TEST_F(Placement, what_is_no_placement_is_ignored)
{
    window.move(11, 12);
    for (const auto* text : { "", " ", "1 2 3", "30 40 587 165 9", "a b c d", "30 40 587 x",
             "30 40 0 0", "30 40 -587 -165", "99999999999 1 587 165", "40000 1 587 165",
             "-40000 1 587 165", "30 40 587 165\n\x01", "30  40 587 165" }) {
        store(text);
        PanelPlacement(window, defaults).restore();
        EXPECT_EQ(window.size(), QSize(782, 220)) << text;
        EXPECT_EQ(window.pos(), QPoint(11, 12)) << text;
    }
    store(std::string(1 << 20, '\xFF'));
    PanelPlacement(window, defaults).restore();
    EXPECT_EQ(window.pos(), QPoint(11, 12));
}

TEST_F(Placement, hiding_the_window_remembers_its_place_for_the_next_run)
{
    PanelPlacement placement(window, defaults);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.move(8, 9);
    window.resize(587, 165);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.pos() == QPoint(8, 9); }));
    window.hide();
    EXPECT_EQ(onDisk(), "8 9 587 165");
}

TEST_F(Placement, a_window_still_shown_at_the_end_is_remembered_too)
{
    {
        PanelPlacement placement(window, defaults);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        window.move(18, 19);
        ASSERT_TRUE(QTest::qWaitFor([&] { return window.pos() == QPoint(18, 19); }));
    }
    EXPECT_EQ(onDisk(), "18 19 782 220");
}

TEST_F(Placement, at_rest_the_place_is_known_to_whoever_writes_the_defaults)
{
    PanelPlacement placement(window, defaults);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.move(28, 29);
    const std::string key(PanelPlacement::Key);
    ASSERT_TRUE(QTest::qWaitFor([&] { return defaults.current.contains(key); }));
    const auto& bytes = defaults.current[key];
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "28 29 782 220");
    EXPECT_EQ(defaults.synchronised, 0);
}

TEST_F(Placement, a_window_that_never_moved_writes_nothing)
{
    {
        PanelPlacement placement(window, defaults);
        placement.restore();
    }
    EXPECT_EQ(defaults.synchronised, 0);
}

TEST_F(Placement, a_failed_write_is_made_up_for_at_the_next_chance)
{
    PanelPlacement placement(window, defaults);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.move(8, 9);
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.pos() == QPoint(8, 9); }));
    defaults.failing = true;
    window.hide();
    EXPECT_EQ(onDisk(), "nothing");
    defaults.failing = false;
    window.show();
    window.hide();
    EXPECT_EQ(onDisk(), "8 9 782 220");
}

TEST_F(Placement, a_maximised_size_is_not_remembered)
{
    PanelPlacement placement(window, defaults);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.move(48, 49);
    const std::string key(PanelPlacement::Key);
    ASSERT_TRUE(QTest::qWaitFor([&] { return defaults.current.contains(key); }));
    window.showMaximized();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.height() > 300; }));
    // On X11 the new size arrives after the new state.
    QResizeEvent resized(window.size(), QSize(782, 220));
    QApplication::sendEvent(&window, &resized);
    // This is longer than the time after which a window counts as at rest.
    EXPECT_FALSE(QTest::qWaitFor([&] { return onDisk() != "nothing"; }, 800));
    window.hide();
    EXPECT_EQ(onDisk(), "48 49 782 220");

    QWidget next;
    next.resize(782, 220);
    PanelPlacement(next, defaults).restore();
    EXPECT_EQ(next.geometry(), QRect(48, 49, 782, 220));
}

TEST_F(Placement, a_window_that_was_maximised_is_remembered_as_it_is_restored)
{
    PanelPlacement placement(window, defaults);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    window.move(48, 49);
    const std::string key(PanelPlacement::Key);
    ASSERT_TRUE(QTest::qWaitFor([&] { return defaults.current.contains(key); }));
    window.showMaximized();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.height() > 300; }));
    window.showNormal();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.size() == QSize(782, 220); }));
    window.hide();
    EXPECT_EQ(onDisk(), "48 49 782 220");
}

TEST_F(Placement, a_place_beyond_the_edge_is_kept_for_the_next_run_but_shown_in_view)
{
    const QPoint corner(screen.right() - 100, 40);
    store(std::to_string(corner.x()) + " 40 587 165");
    PanelPlacement placement(window, defaults);
    placement.restore();
    EXPECT_TRUE(screen.contains(window.frameGeometry()));
    EXPECT_EQ(window.size(), QSize(587, 165));
    placement.bringOntoScreen();
    EXPECT_TRUE(screen.contains(window.frameGeometry()));
    const auto& bytes = defaults.current[std::string(PanelPlacement::Key)];
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), std::to_string(corner.x()) + " 40 587 165");
}

} // namespace kestrel::test
