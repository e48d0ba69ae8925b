#include "tests/end-to-end/RunningStudio.h"
#include "tests/platform/linux/x11/RandrScreen.h"
#include "tools/stage/Patience.h"
#include "tools/stage/SetupWindowOnScreen.h"
#include "tools/stage/XQuery.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <optional>

namespace kestrel::test {
namespace {

constexpr stage::milliseconds ScreenPatience { 10000 };
// Longer than the window manager and the program take to agree on a place.
constexpr stage::milliseconds Rest { 1500 };
constexpr int Width = 620;
constexpr int Height = 453;

// The setup window on displays that change or are small. The program needs no console for this.
class SetupOnScreens : public testing::Test {
protected:
    void openSetupOn(std::uint16_t width, std::uint16_t height)
    {
        studio.emplace(stage::Studio::Options { .tray = false,
            .screen = std::to_string(width) + "x" + std::to_string(height) + "x24" });
        server = stage::connectTo(studio->studio.displayName());
        screen = { 0, 0, width, height };
        studio->startKestrel();
        person.emplace(studio->studio);
        chooseSetup();
    }
    // A second start of the program opens the window as the menu does.
    void chooseSetup()
    {
        EXPECT_EQ(studio->studio.start("kestrel")->wait(ScreenPatience), 0);
        person->waitUntilShown(Title);
    }
    void resizeScreen(std::uint16_t width, std::uint16_t height)
    {
        RandrScreen(server.get(), stage::firstScreen(server.get()).root).resize(width, height);
        screen = { 0, 0, width, height };
    }
    void putWindowAt(int x, int y)
    {
        outlastRest();
        person->moveWindow(Title, x, y);
        outlastRest();
        left = frame();
    }
    static void outlastRest()
    {
        static_cast<void>(stage::comesTrue([] { return false; }, Rest));
    }

    // The window with the window manager's frame.
    [[nodiscard]] stage::Area frame() const
    {
        for (const auto& shown : stage::shownWindows(studio->studio.displayName(), "kestrel")) {
            if (shown.title != Title)
                continue;
            const std::string extents = stage::propertyOf(
                server.get(), shown.id, stage::atomOf(server.get(), "_NET_FRAME_EXTENTS"));
            std::array<std::int32_t, 4> sides {};
            if (extents.size() == sizeof sides)
                std::memcpy(sides.data(), extents.data(), sizeof sides);
            const auto [left, right, top, bottom] = sides;
            const stage::Area& content = shown.area;
            return { content.x - left, content.y - top, content.width + left + right,
                content.height + top + bottom };
        }
        return {};
    }
    [[nodiscard]] stage::Area content() const { return person->windowAtRest(Title); }
    [[nodiscard]] bool isWhollyInView() const
    {
        const stage::Area place = frame();
        return place.width > 0 && place.x >= 0 && place.y >= 0
            && place.x + place.width <= screen.width && place.y + place.height <= screen.height;
    }
    // Also some time later.
    [[nodiscard]] bool comesWhollyIntoView() const
    {
        const bool came = stage::comesTrue([this] { return isWhollyInView(); }, ScreenPatience);
        outlastRest();
        return came && isWhollyInView();
    }

    static inline const std::string Title = stage::SetupWindowOnScreen::Title;
    std::optional<RunningStudio> studio;
    std::optional<stage::Person> person;
    stage::XConnection server { nullptr, &xcb_disconnect };
    stage::Area screen {};
    stage::Area left {}; // the frame after the user has moved the window
};

TEST_F(SetupOnScreens, on_the_part_of_a_display_that_goes_it_comes_wholly_into_view)
{
    openSetupOn(2200, 1400);
    putWindowAt(1500, 900);
    resizeScreen(1100, 800);
    EXPECT_TRUE(comesWhollyIntoView());
    EXPECT_EQ(content().width, Width);
    EXPECT_EQ(content().height, Height);
}

TEST_F(SetupOnScreens, it_shrinks_for_a_passing_small_display_only)
{
    openSetupOn(2200, 1400);
    putWindowAt(300, 200);
    resizeScreen(640, 400);
    EXPECT_TRUE(comesWhollyIntoView());
    EXPECT_LT(content().height, Height);
    resizeScreen(2200, 1400);
    EXPECT_TRUE(stage::comesTrue([this] { return content().height == Height; }, ScreenPatience));
    EXPECT_TRUE(comesWhollyIntoView());
    EXPECT_EQ(content().width, Width);
}

TEST_F(SetupOnScreens, moved_over_the_edge_it_is_wholly_in_view_when_chosen_again)
{
    openSetupOn(1280, 800);
    putWindowAt(1000, 300);
    ASSERT_FALSE(isWhollyInView());
    chooseSetup();
    EXPECT_TRUE(comesWhollyIntoView());
    EXPECT_EQ(frame().y, left.y);
}

// The buttons at the lower right are out of view at first.
TEST_F(SetupOnScreens, on_a_small_display_assign_and_ok_are_reached_by_scrolling)
{
    constexpr int ScrollBar = 16;
    openSetupOn(512, 300);
    EXPECT_TRUE(comesWhollyIntoView());
    const stage::Area window = content();
    ASSERT_LT(window.height, Height);
    ASSERT_LT(window.width, Width);
    person->press("F5"); // the first field has the focus
    const auto scrollTo = [&](const char* button) { // 5 is down, 7 is right
        stage::ChildProcess wheel(
            { "xdotool", "mousemove", std::to_string(window.x + 20), std::to_string(window.y + 60),
                "click", "--repeat", "20", button },
            studio->studio.environment());
        EXPECT_EQ(wheel.wait(ScreenPatience), 0);
    };
    scrollTo("5");
    scrollTo("7");
    // The lower right corner of the content is now at that of the view.
    const auto click = [&](int x, int y) {
        person->click(window.x + window.width - ScrollBar - Width + x,
            window.y + window.height - ScrollBar - Height + y);
    };
    click(568, 319); // Assign
    click(568, 423); // OK
    person->waitUntilGone(Title);
    EXPECT_EQ(studio->terminateKestrel(), 0);
    const auto shown = studio->studio.start("kestrelctl", { "show" });
    EXPECT_TRUE(shown->waitForLineWith("1 \"\" F5", ScreenPatience).has_value());
}

} // namespace
} // namespace kestrel::test
