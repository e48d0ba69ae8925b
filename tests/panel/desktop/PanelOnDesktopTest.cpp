#include "tests/panel/desktop/Desk.h"

#include <gmock/gmock.h>

#include <cmath>

namespace kestrel::test {

namespace {
constexpr const char* KeyA = "A down; A up";

bool inProportion(int width, int height)
{
    return std::abs(height - width * 220 / 782.0) < 1;
}

class PanelOnDesktop : public Desk {
protected:
    [[nodiscard]] bool isFilled(const Content& content) const
    {
        return content.panelX == 0 && content.panelY == 0 && content.panelWidth == content.width
            && content.panelHeight == content.height;
    }
    // Clicks the middle of the panel and checks that the panel received the click.
    void press(const std::string& button)
    {
        const Place place = panelPlace();
        pointer({ "mousemove", std::to_string(place.x + place.width / 2),
            std::to_string(place.y + place.height / 2), "click", button });
        ASSERT_TRUE(panel->waitForLineWith("pressed", Timeout).has_value());
    }
    // Qt writes the hints of a window that is shown without the proportion, and the program adds it
    // once it has learnt of that.
    void waitForProportionHint()
    {
        constexpr std::uint32_t AspectFlag = 1U << 7;
        waitUntil("the hints have the proportion", [this] {
            const auto hints = workstation.words(panelWindow, "WM_NORMAL_HINTS");
            return !hints.empty() && (hints.front() & AspectFlag) != 0;
        });
    }
    void maximise() const
    {
        workstation.tell(panelWindow, "_NET_WM_STATE",
            { 1, workstation.atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                workstation.atom("_NET_WM_STATE_MAXIMIZED_HORZ"), 2 });
    }
};

// Runs with the window traits of the platform, and with Qt's window flags alone.
class PanelFocus : public PanelOnDesktop, public testing::WithParamInterface<const char*> {
protected:
    PanelFocus()
    {
        startPanel({ GetParam() });
        showPanel();
    }
};
} // namespace

TEST_P(PanelFocus, showing_the_panel_leaves_the_keys_to_the_workstation)
{
    EXPECT_TRUE(workstationIsActive());
    EXPECT_EQ(keysThatReachTheWorkstation(), KeyA);
}

TEST_P(PanelFocus, showing_it_once_more_leaves_the_keys_to_the_workstation)
{
    showPanel();
    EXPECT_TRUE(workstationIsActive());
    EXPECT_EQ(keysThatReachTheWorkstation(), KeyA);
}

TEST_P(PanelFocus, clicking_it_with_any_button_leaves_the_keys_to_the_workstation)
{
    for (const auto* button : { "1", "2", "3" }) {
        press(button);
        EXPECT_TRUE(workstationIsActive()) << button;
        EXPECT_EQ(keysThatReachTheWorkstation(), KeyA) << button;
    }
}

TEST_P(PanelFocus, dragging_it_by_its_title_leaves_the_keys_to_the_workstation)
{
    const Place before = panelPlace();
    drag(before.x + 100, before.y - 8, before.x + 160, before.y + 32);
    const Place after = panelPlace();
    EXPECT_EQ(after.x, before.x + 60);
    EXPECT_EQ(after.y, before.y + 40);
    EXPECT_TRUE(workstationIsActive());
    EXPECT_EQ(keysThatReachTheWorkstation(), KeyA);
}

TEST_P(PanelFocus, resizing_it_leaves_the_keys_to_the_workstation)
{
    const Place before = panelPlace();
    drag(before.x + before.width, before.y + before.height + 3, before.x + before.width - 150,
        before.y + before.height - 30);
    waitUntil("the panel is narrower",
        [this, &before] { return panelPlace().width < before.width - 50; });
    EXPECT_TRUE(workstationIsActive());
    EXPECT_EQ(keysThatReachTheWorkstation(), KeyA);
}

TEST_P(PanelFocus, closing_and_showing_it_again_leaves_the_keys_to_the_workstation)
{
    workstation.tell(panelWindow, "_NET_CLOSE_WINDOW", { XCB_CURRENT_TIME, 2 });
    ASSERT_TRUE(panel->waitForLineWith("hidden", Timeout).has_value());
    EXPECT_TRUE(workstationIsActive());
    EXPECT_EQ(keysThatReachTheWorkstation(), KeyA);
    showPanel();
    EXPECT_TRUE(workstationIsActive());
    EXPECT_EQ(keysThatReachTheWorkstation(), KeyA);
}

TEST_P(PanelFocus, hiding_it_leaves_the_keys_to_the_workstation)
{
    panel->writeLine("hide");
    ASSERT_TRUE(panel->waitForLineWith("hidden", Timeout).has_value());
    EXPECT_TRUE(workstationIsActive());
    EXPECT_EQ(keysThatReachTheWorkstation(), KeyA);
}

INSTANTIATE_TEST_SUITE_P(, PanelFocus, testing::Values("--traits", "--plain"),
    [](const auto& info) { return std::string(info.param).substr(2); });

TEST_F(PanelOnDesktop, its_first_content_has_the_size_of_the_background)
{
    startPanel();
    showPanel();
    EXPECT_EQ(content(), (Content { 782, 220, 0, 0, 782, 220 }));
}

TEST_F(PanelOnDesktop, it_floats_above_the_window_that_is_in_front)
{
    startPanel();
    showPanel();
    const auto states = workstation.words(panelWindow, "_NET_WM_STATE");
    EXPECT_THAT(states, testing::Contains(workstation.atom("_NET_WM_STATE_ABOVE")));
    workstation.activate();
    settle();
    const auto stacking = workstation.words(workstation.root(), "_NET_CLIENT_LIST_STACKING");
    ASSERT_FALSE(stacking.empty());
    EXPECT_EQ(stacking.back(), panelWindow);
}

TEST_F(PanelOnDesktop, dragging_its_corner_keeps_it_in_proportion_at_every_step)
{
    startPanel();
    showPanel();
    waitForProportionHint();
    const Place start = panelPlace();
    pointer({ "mousemove", std::to_string(start.x + start.width),
        std::to_string(start.y + start.height + 3), "mousedown", "1" });
    for (int step = 1; step <= 10; ++step) {
        pointer({ "mousemove", std::to_string(start.x + start.width + 17 * step),
            std::to_string(start.y + start.height + 3 + 11 * step) });
        settle();
        const Place now = panelPlace();
        EXPECT_TRUE(inProportion(now.width, now.height)) << now.width << " " << now.height;
    }
    pointer({ "mouseup", "1" });
    settle();
    EXPECT_GT(panelPlace().width, start.width + 100);
    EXPECT_TRUE(isFilled(content()));
}

TEST_F(PanelOnDesktop, a_size_out_of_proportion_is_corrected_even_without_the_platforms_help)
{
    startPanel({ "--plain" });
    showPanel();
    pointer({ "windowsize", std::to_string(panelWindow), "900", "600" });
    ASSERT_TRUE(waitForContent([](const Content& content) {
        return content.width == 900 && content.height == 253;
    }).has_value());
    settle();
    EXPECT_EQ(panelPlace().height, 253);
    EXPECT_EQ(content(), (Content { 900, 253, 0, 0, 900, 253 }));
}

TEST_F(PanelOnDesktop, dragging_its_corner_ends_in_proportion_even_without_the_platforms_help)
{
    startPanel({ "--plain" });
    showPanel();
    const Place start = panelPlace();
    drag(start.x + start.width, start.y + start.height + 3, start.x + start.width - 100,
        start.y + start.height + 203);
    waitUntil("the panel is narrower and in proportion again", [this, &start] {
        const Place end = panelPlace();
        return end.width < start.width - 50 && inProportion(end.width, end.height);
    });
    waitUntil("the view fills it", [this] { return isFilled(content()); });
}

TEST_F(PanelOnDesktop, maximised_it_is_fitted_into_its_window_and_fights_nobody)
{
    startPanel({ "--plain" });
    showPanel();
    maximise();
    const auto fitted = waitForContent([](const Content& content) {
        return content.width > 1000 && content.height > 500 && content.panelY > 0;
    });
    ASSERT_TRUE(fitted.has_value());
    EXPECT_EQ(fitted->panelWidth, fitted->width);
    EXPECT_TRUE(inProportion(fitted->panelWidth, fitted->panelHeight));
    EXPECT_NEAR(fitted->panelY, (fitted->height - fitted->panelHeight) / 2.0, 1);
    // The panel can request no further correction after this time.
    const auto further = panel->linesUntilQuiet(stage::milliseconds(600));
    EXPECT_THAT(further,
        testing::Each(testing::StartsWith(
            "content " + std::to_string(fitted->width) + " " + std::to_string(fitted->height))));
}

TEST_F(PanelOnDesktop, maximised_with_the_platforms_help_the_view_is_in_proportion_too)
{
    startPanel();
    showPanel();
    maximise();
    const auto fitted = waitForContent([](const Content& content) { return content.width > 1000; });
    ASSERT_TRUE(fitted.has_value());
    EXPECT_TRUE(inProportion(fitted->panelWidth, fitted->panelHeight));
    EXPECT_TRUE(fitted->panelWidth == fitted->width || fitted->panelHeight == fitted->height);
    EXPECT_EQ(keysThatReachTheWorkstation(), KeyA);
}

TEST_F(PanelOnDesktop, closed_and_shown_again_it_is_where_it_was_left)
{
    startPanel();
    showPanel();
    const Place first = panelPlace();
    drag(first.x + 100, first.y - 8, first.x + 160, first.y + 32);
    workstation.tell(panelWindow, "_NET_CLOSE_WINDOW", { XCB_CURRENT_TIME, 2 });
    ASSERT_TRUE(panel->waitForLineWith("hidden", Timeout).has_value());
    settle();
    showPanel();
    const Place again = panelPlace();
    EXPECT_EQ(again.x, first.x + 60);
    EXPECT_EQ(again.y, first.y + 40);
    EXPECT_EQ(again.width, first.width);
    EXPECT_EQ(again.height, first.height);
}

TEST_F(PanelOnDesktop, it_comes_back_where_the_last_run_left_it)
{
    startPanel();
    showPanel();
    const Place first = panelPlace();
    drag(first.x + 100, first.y - 8, first.x + 200, first.y + 92);
    const Place left = panelPlace();
    const std::string frame = quitPanel();
    EXPECT_EQ(left.x, first.x + 100);

    for (int run = 0; run < 2; ++run) {
        startPanel({ "--frame", frame });
        showPanel();
        const Place place = panelPlace();
        EXPECT_EQ(place.x, left.x);
        EXPECT_EQ(place.y, left.y);
        EXPECT_EQ(place.width, left.width);
        EXPECT_EQ(quitPanel(), frame);
    }
}

TEST_F(PanelOnDesktop, left_on_a_screen_that_is_gone_it_comes_back_onto_this_one)
{
    startPanel({ "--frame", "4000 3000 782 220" });
    showPanel();
    const Place place = panelPlace();
    EXPECT_GE(place.x, 0);
    EXPECT_GE(place.y, 0);
    EXPECT_LE(place.x + place.width, 1280);
    EXPECT_LE(place.y + place.height, 800);
}

} // namespace kestrel::test
