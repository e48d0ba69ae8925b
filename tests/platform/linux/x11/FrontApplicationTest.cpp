#include "tests/platform/linux/x11/X11Bench.h"

namespace kestrel::test {

namespace {
using Result = KeyEvents::Result;

class Front : public X11Bench {
protected:
    using X11Bench::X11Bench;

    std::string visited()
    {
        std::string names;
        workspace->visitActiveApplications([&](std::string_view localizedName) {
            names += std::string(localizedName) + ";";
            return true;
        });
        return names;
    }
    bool becomesFront(const std::optional<std::string>& name)
    {
        return loop.runUntil([&] { return session->front.name() == name; });
    }
};

class FrontWithoutWindowManager : public Front {
protected:
    FrontWithoutWindowManager()
        : Front(false)
    {
    }
};
} // namespace

TEST_F(Front, is_the_class_of_the_active_window)
{
    EXPECT_EQ(visited(), "Pro Tools;");
    KeyReceiver other(server->display(), "Other");
    bringToFront(other);
    EXPECT_EQ(visited(), "Other;");
}

TEST_F(Front, a_walk_can_be_ended_by_the_visitor)
{
    int visits = 0;
    workspace->visitActiveApplications([&](std::string_view) { return ++visits > 9; });
    EXPECT_EQ(visits, 1);
}

TEST_F(Front, is_as_current_as_the_events_without_the_loop_running)
{
    KeyReceiver other(server->display(), "Other");
    bringToFront(other);
    bringToFront(*workstation);
    other.activate();
    while (!other.isActive()) { }
    EXPECT_EQ(visited(), "Other;");
}

TEST_F(Front, a_change_that_is_read_while_something_is_written_is_not_forgotten)
{
    KeyReceiver other(server->display(), "Other");
    bringToFront(other);
    bringToFront(*workstation);
    other.activate();
    while (!other.isActive()) { }
    xcb_no_operation(session->connection.xcb());
    session->connection.flush();
    EXPECT_TRUE(becomesFront("Other"));
}

TEST_F(Front, losing_it_lets_go_of_every_key_with_only_the_loop_running)
{
    KeyReceiver other(server->display(), "Other");
    bringToFront(other);
    bringToFront(*workstation);
    EXPECT_EQ(press(KeyS, Modifier::Command), Result::Posted);
    EXPECT_EQ(press(KeyA, Modifier::Command), Result::Posted);
    EXPECT_EQ(received(), "Super down; S down Super; A down Super");
    other.activate();
    EXPECT_TRUE(loop.runUntil([this] { return user->keysDown().none(); }));
    EXPECT_EQ(release(KeyA), Result::Posted);
    EXPECT_EQ(received(), "");
}

TEST_F(Front, another_window_of_the_same_application_keeps_the_keys_held)
{
    KeyReceiver dialog(server->display(), "Pro Tools");
    bringToFront(dialog);
    bringToFront(*workstation);
    EXPECT_EQ(press(KeyA), Result::Posted);
    EXPECT_EQ(received(), "A down");
    bringToFront(dialog);
    EXPECT_TRUE(user->keysDown().test(38));
    EXPECT_EQ(release(KeyA), Result::Posted);
    EXPECT_EQ(received(dialog), "A up");
}

TEST_F(Front, ends_with_the_program_that_had_it)
{
    EXPECT_EQ(press(KeyA), Result::Posted);
    settle();
    workstation.reset();
    EXPECT_TRUE(becomesFront({}));
    EXPECT_EQ(visited(), "");
    EXPECT_TRUE(loop.runUntil([this] { return user->keysDown().none(); }));
}

TEST_F(Front, a_class_that_is_changed_later_counts)
{
    workstation->setText(
        workstation->window(), XCB_ATOM_WM_CLASS, std::string("instance\0Renamed\0", 17));
    workstation->synchronise();
    EXPECT_TRUE(becomesFront("Renamed"));
}

TEST_F(Front, a_window_with_half_a_class_or_none_is_unknown)
{
    workstation->setText(workstation->window(), XCB_ATOM_WM_CLASS, "Pro Tools");
    workstation->synchronise();
    EXPECT_TRUE(becomesFront({}));
    EXPECT_EQ(visited(), "");
}

TEST_F(Front, an_active_window_that_is_no_more_is_unknown)
{
    user->setWords(user->root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, { 0x123456 });
    user->synchronise();
    EXPECT_TRUE(becomesFront({}));
    user->setWords(user->root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW, { workstation->window() });
    user->synchronise();
    EXPECT_TRUE(becomesFront("Pro Tools"));
}

TEST_F(FrontWithoutWindowManager, is_the_class_of_the_window_with_the_focus)
{
    KeyReceiver other(server->display(), "Other");
    EXPECT_EQ(visited(), "Pro Tools;");
    other.takeFocus();
    EXPECT_TRUE(becomesFront("Other"));
    workstation->takeFocus();
    EXPECT_TRUE(becomesFront("Pro Tools"));
}

TEST_F(FrontWithoutWindowManager, the_focus_on_a_child_counts_for_its_toplevel)
{
    const xcb_window_t child = xcb_generate_id(workstation->xcb());
    xcb_create_window(workstation->xcb(), XCB_COPY_FROM_PARENT, child, workstation->window(), 0, 0,
        10, 10, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(workstation->xcb(), child);
    xcb_set_input_focus(workstation->xcb(), XCB_INPUT_FOCUS_PARENT, XCB_WINDOW_NONE, 0);
    workstation->synchronise();
    EXPECT_TRUE(becomesFront({}));
    xcb_set_input_focus(workstation->xcb(), XCB_INPUT_FOCUS_PARENT, child, XCB_CURRENT_TIME);
    workstation->synchronise();
    EXPECT_TRUE(becomesFront("Pro Tools"));
}

TEST_F(FrontWithoutWindowManager, losing_the_focus_lets_go_of_every_key)
{
    EXPECT_EQ(press(KeyA), Result::Posted);
    EXPECT_EQ(received(), "A down");
    KeyReceiver other(server->display(), "Other");
    other.takeFocus();
    EXPECT_TRUE(loop.runUntil([this] { return user->keysDown().none(); }));
}

TEST_F(FrontWithoutWindowManager, a_keyboard_grab_is_no_loss_of_the_front)
{
    EXPECT_EQ(press(KeyA), Result::Posted);
    settle();
    const Reply<xcb_grab_keyboard_reply_t> grab(
        xcb_grab_keyboard_reply(user->xcb(),
            xcb_grab_keyboard(user->xcb(), 0, user->root(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC,
                XCB_GRAB_MODE_ASYNC),
            nullptr),
        &std::free);
    ASSERT_EQ(grab->status, XCB_GRAB_STATUS_SUCCESS);
    settle();
    EXPECT_EQ(visited(), "Pro Tools;");
    EXPECT_TRUE(user->keysDown().test(38));
}

} // namespace kestrel::test
