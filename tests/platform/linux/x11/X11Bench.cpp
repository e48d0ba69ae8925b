#include "tests/platform/linux/x11/X11Bench.h"

#include <array>
#include <cstdlib>
#include <utility>

namespace kestrel::test {

namespace {
using Direction = KeyEvents::Direction;
} // namespace

X11Bench::X11Bench(bool windowManager)
{
    stage::PrivateXServer::Options options;
    options.windowManager = windowManager;
    server.emplace(options);
    ::setenv("DISPLAY", server->display().c_str(), 1);
    ::setenv("XDG_RUNTIME_DIR", runtimeFolder.path().c_str(), 1);
    workstation.emplace(server->display(), "Pro Tools");
    user.emplace(server->display());
    start();
    bringToFront(*workstation);
}

X11Bench::~X11Bench()
{
    stop();
}

void X11Bench::start(std::chrono::milliseconds patience)
{
    session = std::make_shared<X11Session>(loop, patience);
    keyEvents = std::make_unique<XTestKeyEvents>(session);
    workspace = std::make_unique<X11Workspace>(session);
    session->connection.ensureOpen();
}

void X11Bench::stop()
{
    workspace.reset();
    keyEvents.reset();
    session.reset();
}

void X11Bench::bringToFront(KeyReceiver& receiver)
{
    if (receiver.words(receiver.root(), "_NET_SUPPORTING_WM_CHECK").empty()) {
        receiver.takeFocus();
    } else {
        ASSERT_TRUE(loop.runUntil([&] { return receiver.isManaged(); }));
        receiver.activate();
        settleWindowManager();
        ASSERT_TRUE(loop.runUntil([&] { return receiver.isActive(); }));
    }
    ASSERT_TRUE(loop.runUntil([&] { return receiver.hasFocus(); }));
    ASSERT_TRUE(
        loop.runUntil([&] { return session->front.name() == receiver.applicationClass(); }));
    ASSERT_EQ(received(receiver), "");
}

// Waits for two answers of the window manager. The first comes after all earlier requests, the
// second after the focus events that those requests have caused.
void X11Bench::settleWindowManager()
{
    for (int question = 0; question < 2; ++question) {
        KeyReceiver asker(server->display(), "asker", KeyReceiver::Map::No);
        asker.tell(asker.window(), "_NET_REQUEST_FRAME_EXTENTS", {});
        ASSERT_TRUE(loop.runUntil(
            [&] { return asker.words(asker.window(), "_NET_FRAME_EXTENTS").size() == 4; }));
    }
}

KeyEvents::Result X11Bench::press(
    KeyCode key, ModifierFlags flags, KeyEvents::AutoRepeat autoRepeat)
{
    return keyEvents->post(key, Direction::Down, flags, autoRepeat);
}

KeyEvents::Result X11Bench::release(KeyCode key, ModifierFlags flags)
{
    return keyEvents->post(key, Direction::Up, flags, KeyEvents::AutoRepeat::No);
}

void X11Bench::pressShortcut(KeyCode key, ModifierFlags flags)
{
    EXPECT_EQ(press(key, flags), KeyEvents::Result::Posted);
    releaseModifiers(flags);
}

void X11Bench::releaseShortcut(KeyCode key, ModifierFlags flags)
{
    EXPECT_EQ(release(key, flags), KeyEvents::Result::Posted);
    releaseModifiers(flags);
}

unsigned X11Bench::requestsOf(const std::function<void()>& posting) const
{
    xcb_connection_t* const xcb = session->connection.xcb();
    const unsigned before = xcb_no_operation(xcb).sequence;
    posting();
    return xcb_no_operation(xcb).sequence - before - 1;
}

void X11Bench::releaseModifiers(ModifierFlags flags)
{
    static constexpr std::array<std::pair<ModifierFlags, KeyCode>, 4> Keys {
        { { Modifier::Control, ModifierKey::Control }, { Modifier::Shift, ModifierKey::Shift },
            { Modifier::Option, ModifierKey::Option }, { Modifier::Command, ModifierKey::Command } }
    };
    for (const auto& [flag, key] : Keys) {
        if ((flags & flag) != 0) {
            EXPECT_EQ(keyEvents->postBare(key, Direction::Up), KeyEvents::Result::Posted);
        }
    }
}

std::string X11Bench::received(KeyReceiver& receiver)
{
    settle();
    return receiver.keys();
}

void X11Bench::settle()
{
    auto& connection = session->connection;
    if (connection.isOpen())
        (void)connection.reply<xcb_get_input_focus_reply_t>(
            xcb_get_input_focus(connection.xcb()).sequence);
    connection.takeIn();
    if (connection.isOpen())
        (void)connection.reply<xcb_get_input_focus_reply_t>(
            xcb_get_input_focus(connection.xcb()).sequence);
}

} // namespace kestrel::test
