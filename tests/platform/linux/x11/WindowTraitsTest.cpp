#include "platform/linux/x11/X11WindowTraits.h"
#include "tests/platform/linux/x11/X11Bench.h"

#include <algorithm>

namespace kestrel::test {

namespace {
class WindowTraitsOnX11 : public X11Bench {
protected:
    using Words = std::vector<std::uint32_t>;

    WindowTraitsOnX11()
        : traits(session)
        , panel(server->display(), "Kestrel", KeyReceiver::Map::No)
    {
    }
    Words stateAtoms()
    {
        return { panel.atom("_NET_WM_STATE_ABOVE"), panel.atom("_NET_WM_STATE_SKIP_TASKBAR"),
            panel.atom("_NET_WM_STATE_SKIP_PAGER") };
    }
    bool hasStates()
    {
        const Words states = panel.words(panel.window(), "_NET_WM_STATE");
        return std::ranges::all_of(stateAtoms(),
            [&](std::uint32_t state) { return std::ranges::find(states, state) != states.end(); });
    }
    void setHints(std::string_view property, const Words& words)
    {
        panel.setWords(panel.window(), property, panel.atom(property), words);
        panel.synchronise();
    }

    X11WindowTraits traits;
    KeyReceiver panel;
};
} // namespace

TEST_F(WindowTraitsOnX11, an_aspect_ratio_is_added_to_the_other_size_hints)
{
    Words hints(18);
    hints[0] = 0x10 | 0x20; // least and greatest size
    hints[5] = 391;
    hints[6] = 110;
    hints[7] = 1564;
    hints[8] = 440;
    setHints("WM_NORMAL_HINTS", hints);
    traits.setContentAspectRatio(panel.window(), 782, 220);
    settle();
    hints[0] |= 0x80;
    hints[11] = hints[13] = 782;
    hints[12] = hints[14] = 220;
    EXPECT_EQ(panel.words(panel.window(), "WM_NORMAL_HINTS"), hints);
}

TEST_F(WindowTraitsOnX11, an_aspect_ratio_comes_back_when_the_toolkit_has_overwritten_it)
{
    traits.setContentAspectRatio(panel.window(), 782, 220);
    settle();
    Words hints(18);
    hints[0] = 0x10;
    hints[5] = 400;
    setHints("WM_NORMAL_HINTS", hints);
    hints[0] |= 0x80;
    hints[11] = hints[13] = 782;
    hints[12] = hints[14] = 220;
    EXPECT_TRUE(
        loop.runUntil([&] { return panel.words(panel.window(), "WM_NORMAL_HINTS") == hints; }));
}

TEST_F(WindowTraitsOnX11, an_aspect_ratio_without_extent_is_ignored)
{
    traits.setContentAspectRatio(panel.window(), 0, 220);
    traits.setContentAspectRatio(panel.window(), 782, -1);
    settle();
    EXPECT_EQ(panel.words(panel.window(), "WM_NORMAL_HINTS"), Words());
}

TEST_F(WindowTraitsOnX11, the_window_manager_keeps_the_aspect_ratio)
{
    traits.setContentAspectRatio(panel.window(), 2, 1);
    settle();
    panel.map();
    ASSERT_TRUE(loop.runUntil([this] { return panel.isManaged(); }));
    const std::uint32_t size[] { 300, 300 };
    xcb_configure_window(
        panel.xcb(), panel.window(), XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
    EXPECT_TRUE(loop.runUntil([this] {
        const Reply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(
                panel.xcb(), xcb_get_geometry(panel.xcb(), panel.window()), nullptr),
            &std::free);
        return geometry->width != 200 && geometry->width == 2 * geometry->height;
    }));
}

TEST_F(WindowTraitsOnX11, floating_is_said_of_a_window_before_it_is_shown)
{
    traits.setFloating(panel.window());
    settle();
    EXPECT_EQ(panel.words(panel.window(), "_NET_WM_STATE"), stateAtoms());
    EXPECT_EQ(panel.words(panel.window(), "_NET_WM_WINDOW_TYPE"),
        Words { panel.atom("_NET_WM_WINDOW_TYPE_UTILITY") });
    panel.map();
    ASSERT_TRUE(loop.runUntil([this] { return panel.isManaged(); }));
    EXPECT_TRUE(hasStates());
}

TEST_F(WindowTraitsOnX11, floating_survives_a_toolkit_that_overwrites_it_before_showing)
{
    traits.setFloating(panel.window());
    settle();
    panel.setWords(panel.window(), "_NET_WM_STATE", XCB_ATOM_ATOM, {});
    panel.map();
    EXPECT_TRUE(loop.runUntil([this] { return panel.isManaged() && hasStates(); }));
}

TEST_F(WindowTraitsOnX11, floating_is_asked_of_the_window_manager_for_a_shown_window)
{
    panel.map();
    ASSERT_TRUE(loop.runUntil([this] { return panel.isManaged(); }));
    EXPECT_FALSE(hasStates());
    traits.setFloating(panel.window());
    EXPECT_TRUE(loop.runUntil([this] { return hasStates(); }));
}

TEST_F(WindowTraitsOnX11, a_window_never_focused_leaves_the_focus_where_it_is)
{
    setHints("WM_HINTS", { 3, 1, 1, 0, 0, 0, 0, 0, 0 });
    panel.setWords(panel.window(), "WM_PROTOCOLS", XCB_ATOM_ATOM,
        { panel.atom("WM_DELETE_WINDOW"), panel.atom("WM_TAKE_FOCUS") });
    panel.synchronise();
    traits.setNeverFocused(panel.window());
    settle();
    EXPECT_EQ(panel.words(panel.window(), "WM_HINTS"), Words({ 3, 0, 1, 0, 0, 0, 0, 0, 0 }));
    EXPECT_EQ(
        panel.words(panel.window(), "WM_PROTOCOLS"), Words { panel.atom("WM_DELETE_WINDOW") });

    panel.map();
    ASSERT_TRUE(loop.runUntil([this] { return panel.isManaged(); }));
    panel.activate();
    settleWindowManager();
    settle();
    EXPECT_TRUE(workstation->hasFocus());
    EXPECT_EQ(session->front.name(), "Pro Tools");
}

TEST_F(WindowTraitsOnX11, never_focused_comes_back_when_the_toolkit_has_overwritten_it)
{
    traits.setNeverFocused(panel.window());
    settle();
    setHints("WM_HINTS", { 1, 1, 0, 0, 0, 0, 0, 0, 0 });
    panel.setWords(panel.window(), "WM_PROTOCOLS", XCB_ATOM_ATOM, { panel.atom("WM_TAKE_FOCUS") });
    panel.synchronise();
    EXPECT_TRUE(loop.runUntil([this] {
        return panel.words(panel.window(), "WM_HINTS").at(1) == 0
            && panel.words(panel.window(), "WM_PROTOCOLS").empty();
    }));
}

TEST_F(WindowTraitsOnX11, a_window_that_is_no_more_is_no_matter)
{
    traits.setContentAspectRatio(0x123456, 2, 1);
    traits.setFloating(0x123456);
    traits.setNeverFocused(0x123456);
    traits.setFloating(0);
    pressShortcut(KeyA, 0);
    EXPECT_EQ(received(), "A down");
}

} // namespace kestrel::test
