#include "tests/panel/desktop/Desk.h"
#include "tests/platform/linux/x11/RandrScreen.h"

namespace kestrel::test {

namespace {
class ChangingScreens : public Desk {
protected:
    ChangingScreens()
        : Desk({ .screen = "2200x1400x24" })
    {
        startPanel();
        showPanel();
    }
    void putPanelAt(int x, int y)
    {
        const Place frame = framePlace();
        drag(frame.x + 100, frame.y + 8, x + 100, y + 8);
        outlastRest();
        ASSERT_EQ(framePlace().x, x);
        ASSERT_EQ(framePlace().y, y);
    }
    void resizeScreen(std::uint16_t width, std::uint16_t height)
    {
        display.resize(width, height);
        screen = { 0, 0, width, height };
    }
    // Waits longer than the time after which the panel takes its place as chosen by the user.
    void outlastRest()
    {
        static_cast<void>(panel->linesUntilQuiet(stage::milliseconds(1300)));
        settle();
    }
    [[nodiscard]] bool isWhollyInView()
    {
        const Place frame = framePlace();
        return frame.x >= 0 && frame.y >= 0 && frame.x + frame.width <= screen.width
            && frame.y + frame.height <= screen.height;
    }
    void expectPlace(const Place& expected)
    {
        EXPECT_EQ(waitForPlace([&](const Place& place) { return place == expected; }), expected);
    }

    RandrScreen display { workstation.xcb(), workstation.root() };
    Place screen { 0, 0, 2200, 1400 };
};
} // namespace

TEST_F(ChangingScreens, a_panel_on_the_part_of_a_screen_that_goes_comes_wholly_into_view)
{
    putPanelAt(1300, 900);
    resizeScreen(1100, 800);
    EXPECT_NO_THROW(waitUntil("all of it is in view", [this] { return isWhollyInView(); }));
    outlastRest();
    EXPECT_TRUE(isWhollyInView());
    EXPECT_EQ(panelPlace().width, 782);
}

TEST_F(ChangingScreens, a_panel_that_showed_a_little_comes_wholly_into_view)
{
    putPanelAt(1100 - 77, 700);
    resizeScreen(1100, 1400);
    EXPECT_NO_THROW(waitUntil("all of it is in view", [this] { return isWhollyInView(); }));
    outlastRest();
    EXPECT_TRUE(isWhollyInView());
}

TEST_F(ChangingScreens, a_panel_goes_back_where_it_was_put_when_its_screen_returns)
{
    putPanelAt(1300, 900);
    const Place before = panelPlace();
    resizeScreen(1024, 600);
    EXPECT_NO_THROW(waitUntil("all of it is in view", [this] { return isWhollyInView(); }));
    outlastRest();
    resizeScreen(2200, 1400);
    expectPlace(before);
}

TEST_F(ChangingScreens, a_panel_shrinks_in_proportion_for_a_passing_small_screen_only)
{
    putPanelAt(300, 200);
    const Place before = panelPlace();
    resizeScreen(640, 480);
    EXPECT_NO_THROW(waitUntil("all of it is in view", [this] { return isWhollyInView(); }));
    outlastRest();
    EXPECT_TRUE(isWhollyInView());
    const Content small = content();
    EXPECT_EQ(small.panelWidth, small.width);
    EXPECT_NEAR(small.height, small.width * 220 / 782.0, 1);
    resizeScreen(2200, 1400);
    expectPlace(before);
    outlastRest();
    EXPECT_EQ(panelPlace(), before);
    EXPECT_EQ(quitPanel(), std::to_string(300) + " 200 782 220");
}

TEST_F(ChangingScreens, what_is_remembered_while_a_screen_is_away_is_where_the_panel_was_put)
{
    putPanelAt(1300, 900);
    resizeScreen(640, 480);
    outlastRest();
    EXPECT_EQ(quitPanel(), "1300 900 782 220");
}

TEST_F(ChangingScreens, a_panel_moved_on_the_small_screen_stays_there_and_gets_its_size_back)
{
    putPanelAt(1300, 900);
    resizeScreen(640, 480);
    outlastRest();
    putPanelAt(0, 40);
    resizeScreen(2200, 1400);
    const Place back = waitForPlace([](const Place& place) { return place.width == 782; });
    EXPECT_EQ(back.width, 782);
    outlastRest();
    EXPECT_EQ(framePlace().x, 0);
    EXPECT_EQ(framePlace().y, 40);
}

TEST_F(ChangingScreens, a_panel_dragged_over_the_edge_is_wholly_in_view_when_chosen_again)
{
    putPanelAt(1900, 300);
    ASSERT_FALSE(isWhollyInView());
    showPanel();
    EXPECT_NO_THROW(waitUntil("all of it is in view", [this] { return isWhollyInView(); }));
    EXPECT_EQ(panelPlace().width, 782);
    EXPECT_EQ(framePlace().y, 300);
}

TEST_F(ChangingScreens, a_closed_panel_is_wholly_in_view_when_chosen_after_its_screen_went)
{
    putPanelAt(1300, 900);
    closePanel();
    resizeScreen(1024, 600);
    settle();
    showPanel();
    EXPECT_NO_THROW(waitUntil("all of it is in view", [this] { return isWhollyInView(); }));
    outlastRest();
    EXPECT_TRUE(isWhollyInView());
}

TEST_F(ChangingScreens, a_panel_restored_after_its_screen_went_is_wholly_in_view)
{
    putPanelAt(1300, 900);
    const auto maximise = [this](std::uint32_t add) {
        workstation.tell(panelWindow, "_NET_WM_STATE",
            { add, workstation.atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                workstation.atom("_NET_WM_STATE_MAXIMIZED_HORZ"), 2 });
        settle();
    };
    maximise(1);
    waitUntil("the panel is maximised", [this] { return panelPlace().width > 2000; });
    resizeScreen(1024, 600);
    waitUntil("the panel is smaller", [this] { return panelPlace().width <= 1024; });
    maximise(0);
    EXPECT_NO_THROW(waitUntil(
        "all of it is in view", [this] { return panelPlace().width <= 782 && isWhollyInView(); }));
    outlastRest();
    EXPECT_TRUE(isWhollyInView());
    EXPECT_EQ(panelPlace().width, 782);
}

} // namespace kestrel::test
