#include "setup/SetupPlacement.h"

#include "setup/SetupWindow.h"
#include "tests/fakes/FakeSystem.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QScreen>

#include <gtest/gtest.h>

namespace kestrel::test {
namespace {

constexpr QSize Content(620, 453);
constexpr QSize SmallRoom(512, 272);
constexpr QPoint OffTheScreens(5000, 6000);

class SetupPlacementTest : public testing::Test {
protected:
    void changeScreens() const
    {
        emit QGuiApplication::primaryScreen()->availableGeometryChanged(screen);
        QCoreApplication::processEvents();
    }

    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    FakeDefaultsStore defaults;
    SetupWindow window;
    SetupPlacement placement { window, defaults };
};

TEST_F(SetupPlacementTest, restoring_a_window_fits_it_into_its_screen_before_it_is_shown)
{
    window.fitInto(SmallRoom); // as on a small screen that is gone
    ASSERT_NE(window.size(), Content);
    placement.restore();
    EXPECT_EQ(window.size(), Content);
    EXPECT_TRUE(screen.contains(window.geometry()));
}

TEST_F(SetupPlacementTest, a_shown_window_is_brought_into_view_when_the_screens_change)
{
    placement.restore();
    window.show();
    window.fitInto(SmallRoom);
    window.move(OffTheScreens);
    changeScreens();
    EXPECT_EQ(window.size(), Content);
    EXPECT_TRUE(screen.contains(window.frameGeometry()));
}

TEST_F(SetupPlacementTest, a_hidden_window_stays_when_the_screens_change)
{
    window.move(OffTheScreens);
    changeScreens();
    EXPECT_EQ(window.pos(), OffTheScreens);
}

} // namespace
} // namespace kestrel::test
