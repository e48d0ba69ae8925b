#include "setup/SavedWindowFrame.h"

#include "tests/setup/SetupBench.h"

#include <QGuiApplication>
#include <QScreen>

namespace kestrel::test {
namespace {

const std::string Key = "NSWindow Frame UAssignWindow";

std::string stored(const FakeDefaultsStore& defaults)
{
    const auto found = defaults.current.find(Key);
    return found == defaults.current.end()
        ? "nothing"
        : std::string(found->second.begin(), found->second.end());
}

void store(FakeDefaultsStore& defaults, const std::string& text)
{
    defaults.current[Key] = { text.begin(), text.end() };
}

TEST(SavedWindowFrame, without_a_saved_frame_the_content_is_at_600_350_from_the_lower_left)
{
    SetupBench bench;
    ASSERT_EQ(QGuiApplication::primaryScreen()->geometry(), QRect(0, 0, 1920, 1080));
    EXPECT_EQ(bench.controller.window()->geometry(), QRect(600, 1080 - 350 - 453, 620, 453));
}

TEST(SavedWindowFrame, without_a_saved_frame_the_window_is_moved_until_it_is_wholly_on_the_screen)
{
    FakeDefaultsStore defaults;
    const SavedWindowFrame frame("Test", defaults);
    QWidget window;
    window.setFixedSize(620, 453);
    const auto placed = [&](const QRect& screen) {
        frame.restore(window, { 600, 350, 620, 453 }, { screen });
        return window.geometry();
    };
    EXPECT_EQ(placed({ 0, 0, 1920, 1080 }), QRect(600, 277, 620, 453));
    EXPECT_EQ(placed({ 0, 0, 1080, 1920 }), QRect(460, 277, 620, 453));
    EXPECT_EQ(placed({ 0, 0, 1024, 600 }), QRect(404, 147, 620, 453));
    EXPECT_EQ(placed({ 0, 0, 512, 300 }), QRect(0, 28, 620, 453)) << "below its title bar";
}

TEST(SavedWindowFrame, it_reopens_where_it_was_left)
{
    FakeDefaultsStore defaults;
    {
        SetupBench bench(&defaults);
        bench.open();
        bench.controller.window()->move(120, 90);
        bench.controller.closeDialog();
        EXPECT_EQ(stored(defaults), "120 537 620 453 0 0 1920 1080 "); // 1080 - 90 - 453
        bench.controller.window()->move(5, 5);
        bench.open();
        EXPECT_EQ(bench.controller.window()->pos(), QPoint(120, 90));
    }
    SetupBench next(&defaults);
    EXPECT_EQ(next.controller.window()->pos(), QPoint(120, 90));
    EXPECT_EQ(next.controller.window()->size(), QSize(620, 453));
}

TEST(SavedWindowFrame, the_close_box_saves_too)
{
    SetupBench bench;
    bench.open();
    bench.controller.window()->move(33, 44);
    bench.controller.window()->close();
    EXPECT_EQ(stored(bench.defaults), "33 583 620 453 0 0 1920 1080 ");
}

TEST(SavedWindowFrame, hiding_the_window_by_itself_saves_too)
{
    SetupBench bench;
    bench.open();
    bench.controller.window()->move(33, 44);
    bench.controller.window()->hide();
    EXPECT_EQ(stored(bench.defaults), "33 583 620 453 0 0 1920 1080 ");
    bench.open();
    EXPECT_EQ(bench.controller.window()->pos(), QPoint(33, 44));
}

TEST(SavedWindowFrame, another_window_that_closes_saves_no_frame_of_a_hidden_one)
{
    SetupBench bench;
    bench.open();
    bench.controller.window()->hide();
    store(bench.defaults, "saved before");
    bench.center.post(NotificationName::windowWillClose);
    EXPECT_EQ(stored(bench.defaults), "saved before");
}

TEST(SavedWindowFrame, a_window_that_was_never_shown_has_no_frame_to_save)
{
    SetupBench bench;
    bench.center.post(NotificationName::windowWillClose);
    EXPECT_EQ(bench.calls, std::vector<std::string> { "hide" });
    EXPECT_EQ(stored(bench.defaults), "nothing");
}

TEST(SavedWindowFrame, a_frame_off_the_screen_is_brought_back)
{
    FakeDefaultsStore defaults;
    store(defaults, "5000 -4000 620 453 0 0 9000 9000 ");
    SetupBench bench(&defaults);
    EXPECT_EQ(bench.controller.window()->pos(), QPoint(1300, 627));
}

TEST(SavedWindowFrame, text_that_is_no_frame_counts_as_none)
{
    for (const char* text : { "", "1 2 3", "a b c d", "1 2 0 4", "1 2 -3 4", "1e300 2 3 4",
             "nan 2 3 4", "inf 2 3 4", "\xFF\xFE 1 2 3" })
        EXPECT_EQ(SavedWindowFrame::parsed(text), std::nullopt) << text;
    EXPECT_EQ(SavedWindowFrame::parsed("1 2 3 4"), QRect(1, 2, 3, 4));
    EXPECT_EQ(SavedWindowFrame::parsed("-1.5 2 3 4 0 0 1920 1055 "), QRect(-1, 2, 3, 4));
}

} // namespace
} // namespace kestrel::test
