#include "panel/PanelProportion.h"
#include "panel/PanelShape.h"

#include <QApplication>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace kestrel::test {

TEST(PanelShape, the_height_is_220_782ths_of_the_width)
{
    EXPECT_DOUBLE_EQ(panelHeight(782), 220);
    EXPECT_DOUBLE_EQ(panelHeight(1000), 281.3299232736573);
}

TEST(PanelShape, less_than_a_pixel_is_in_proportion)
{
    EXPECT_TRUE(isInProportion({ 782, 220 }));
    EXPECT_FALSE(isInProportion({ 782, 221 }));
    EXPECT_FALSE(isInProportion({ 782, 219 }));
    EXPECT_TRUE(isInProportion({ 1000, 281 })); // 281.33 is exact
    EXPECT_TRUE(isInProportion({ 1000, 282 }));
    EXPECT_FALSE(isInProportion({ 1000, 280 }));
    EXPECT_FALSE(isInProportion({ 1000, 283 }));
}

TEST(PanelShape, a_content_in_proportion_is_all_panel)
{
    EXPECT_EQ(fittedPanel({ 1000, 282 }), QRect(0, 0, 1000, 282));
}

TEST(PanelShape, too_high_a_content_has_the_panel_in_its_middle)
{
    EXPECT_EQ(fittedPanel({ 782, 420 }), QRect(0, 100, 782, 220));
}

TEST(PanelShape, too_wide_a_content_has_the_panel_in_its_middle)
{
    EXPECT_EQ(fittedPanel({ 982, 220 }), QRect(100, 0, 782, 220));
}

namespace {
// A window whose window manager insists on the size `insisted` if it is set.
class Window : public QWidget {
public:
    void resizeEvent(QResizeEvent*) override
    {
        ++resizes;
        if (insisted.isValid() && size() != insisted)
            resize(insisted);
    }

    QSize insisted;
    int resizes = 0;
};

class Proportion : public testing::Test {
protected:
    Proportion()
    {
        window.resize(782, 220);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    Window window;
    QWidget view { &window };
    int asked = 0;
    bool isGiven = false;
    PanelProportion proportion { window, view,
        [this](QSize content) {
            ++asked;
            return QSize(content.width(), qRound(panelHeight(content.width())));
        },
        [this] { return isGiven; } };
};
} // namespace

TEST_F(Proportion, a_size_that_the_window_system_gives_is_not_corrected)
{
    isGiven = true;
    window.resize(1000, 600);
    int turns = 0; // of the event loop, for longer than it takes a size to settle
    static_cast<void>(QTest::qWaitFor([&] { return ++turns > 100; }));
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(window.size(), QSize(1000, 600));
    isGiven = false;
    window.resize(1000, 601);
    EXPECT_TRUE(QTest::qWaitFor([&] { return asked > 0; })) << "it is out of proportion";
}

TEST_F(Proportion, a_window_out_of_proportion_corrects_its_height)
{
    window.resize(1000, 600);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.size() == QSize(1000, 281); }));
    EXPECT_EQ(view.geometry(), QRect(0, 0, 1000, 281));
    EXPECT_EQ(asked, 1);
}

TEST_F(Proportion, the_view_is_in_proportion_even_before_the_window_is)
{
    window.resize(782, 420);
    EXPECT_EQ(view.geometry(), QRect(0, 100, 782, 220));
}

TEST_F(Proportion, sizes_that_come_together_are_corrected_once)
{
    for (int height = 300; height < 400; ++height)
        window.resize(782, height);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.size() == QSize(782, 220); }));
    EXPECT_EQ(asked, 1);
}

TEST_F(Proportion, a_window_that_may_not_be_that_size_is_asked_for_it_twice_and_then_left)
{
    window.insisted = QSize(900, 600);
    window.resize(900, 600);
    ASSERT_TRUE(QTest::qWaitFor([&] { return asked == 2; }));
    // Further requests could come only from timers that run now; they end within this time.
    EXPECT_FALSE(QTest::qWaitFor([&] { return asked > 2; }, 600));
    EXPECT_EQ(window.size(), QSize(900, 600));
    EXPECT_EQ(view.geometry(), fittedPanel({ 900, 600 }));
}

TEST_F(Proportion, a_window_in_proportion_is_left_alone)
{
    window.resize(1000, 281);
    EXPECT_FALSE(QTest::qWaitFor([&] { return asked > 0; }, 600));
}

TEST_F(Proportion, another_size_out_of_proportion_is_corrected_again)
{
    for (const int height : { 500, 501, 500 }) {
        asked = 0;
        window.resize(782, height);
        EXPECT_TRUE(QTest::qWaitFor([&] { return asked == 1; })) << height;
        ASSERT_EQ(window.size(), QSize(782, 220));
    }
}

TEST_F(Proportion, a_size_that_was_insisted_on_is_corrected_again_after_one_in_proportion)
{
    window.insisted = QSize(900, 600);
    window.resize(900, 600);
    ASSERT_TRUE(QTest::qWaitFor([&] { return asked == 2; }));
    window.insisted = {};
    window.resize(782, 220);
    EXPECT_FALSE(QTest::qWaitFor([&] { return asked > 2; }, 600));
    window.resize(900, 600);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window.size() == QSize(900, 253); }));
}

// A window manager sends a size and a state when it maximises or restores a window, in either
// order.
TEST_F(Proportion, a_size_that_comes_shortly_before_another_state_is_left_alone)
{
    window.resize(900, 600);
    QWindowStateChangeEvent changed(Qt::WindowNoState);
    QApplication::sendEvent(&window, &changed);
    EXPECT_FALSE(QTest::qWaitFor([&] { return asked > 0; }, 600));
    EXPECT_EQ(view.geometry(), fittedPanel({ 900, 600 }));
}

TEST_F(Proportion, a_state_that_comes_before_its_size_corrects_nothing)
{
    window.resize(900, 600);
    for (int i = 0; i < 3; ++i) {
        QWindowStateChangeEvent changed(Qt::WindowMaximized);
        QApplication::sendEvent(&window, &changed);
        QApplication::processEvents();
        EXPECT_EQ(asked, 0);
    }
    window.resize(782, 220);
    EXPECT_FALSE(QTest::qWaitFor([&] { return asked > 0; }, 600));
}

TEST_F(Proportion, a_maximised_window_is_left_alone_and_the_view_fitted_into_it)
{
    window.showMaximized();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.width() > 782 || window.height() > 300; }));
    EXPECT_FALSE(QTest::qWaitFor([&] { return asked > 0; }, 600));
    EXPECT_EQ(view.geometry(), fittedPanel(window.size()));
    EXPECT_NEAR(view.height(), panelHeight(view.width()), 1);
}

} // namespace kestrel::test
