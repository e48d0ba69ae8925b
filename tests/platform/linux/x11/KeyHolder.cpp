// Presses keys as the utility does and holds them until it is killed.

#include "platform/linux/x11/X11Session.h"
#include "platform/linux/x11/XTestKeyEvents.h"
#include "tests/support/PollMainLoop.h"

#include <iostream>

int main()
{
    using namespace kestrel;
    using test::PollMainLoop;
    PollMainLoop loop;
    const auto session = std::make_shared<X11Session>(loop);
    XTestKeyEvents keyEvents(session);
    session->connection.ensureOpen();
    const auto press = [&keyEvents](KeyCode key, ModifierFlags flags) {
        return keyEvents.post(key, KeyEvents::Direction::Down, flags, KeyEvents::AutoRepeat::No)
            == KeyEvents::Result::Posted;
    };
    constexpr KeyCode KeyA = 0;
    constexpr KeyCode KeyS = 1;
    const bool held = press(KeyA, Modifier::Command) && press(KeyS, Modifier::Command);
    // The answer proves that the server has handled the key-downs.
    const auto answer = session->connection.reply<xcb_get_input_focus_reply_t>(
        xcb_get_input_focus(session->connection.xcb()).sequence);
    std::cout << (held && answer ? "held" : "failed") << std::endl;
    loop.runUntil([] { return false; });
}
