#pragma once

#include "platform/linux/x11/X11Session.h"
#include "platform/linux/x11/X11Workspace.h"
#include "platform/linux/x11/XTestKeyEvents.h"
#include "tests/platform/linux/x11/KeyReceiver.h"
#include "tests/platform/linux/x11/UserKeyboard.h"
#include "tests/support/PollMainLoop.h"
#include "tools/stage/PrivateXServer.h"
#include "tools/stage/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <optional>

namespace kestrel::test {

// X keycodes of keys of a PC keyboard.
namespace XKey {
constexpr xcb_keycode_t A = 38, Shift = 50, RightShift = 62, Super = 133;
}

// A private X server with a window manager, a workstation window in front, the adapters under test,
// and separate journals.
class X11Bench : public ::testing::Test {
protected:
    static constexpr KeyCode KeyA = 0, KeyS = 1, KeyD = 2, KeyF5 = 96;

    explicit X11Bench(bool windowManager = true);
    ~X11Bench() override;

    // Starts the adapters, with so much patience that only the tests of a server that stands still
    // depend on the speed of the machine.
    void start(std::chrono::milliseconds patience = std::chrono::seconds(20));
    void stop();
    void bringToFront(KeyReceiver& receiver);
    void settleWindowManager();

    KeyEvents::Result press(KeyCode key, ModifierFlags flags = 0,
        KeyEvents::AutoRepeat autoRepeat = KeyEvents::AutoRepeat::No);
    KeyEvents::Result release(KeyCode key, ModifierFlags flags = 0);
    void releaseModifiers(ModifierFlags flags);
    // How many requests the adapters send to the server in `posting`.
    [[nodiscard]] unsigned requestsOf(const std::function<void()>& posting) const;
    // Posts like the program for a console key: the main key, then the key-up of each modifier.
    void pressShortcut(KeyCode key, ModifierFlags flags);
    void releaseShortcut(KeyCode key, ModifierFlags flags);

    // Returns the events of the receiver after the server has handled all requests of the adapters.
    std::string received(KeyReceiver& receiver);
    std::string received() { return received(*workstation); }
    void settle(); // waits until the server and the adapters are up to date

    std::optional<stage::PrivateXServer> server;
    PollMainLoop loop;
    std::optional<KeyReceiver> workstation;
    std::optional<UserKeyboard> user;
    std::shared_ptr<X11Session> session;
    std::unique_ptr<XTestKeyEvents> keyEvents;
    std::unique_ptr<X11Workspace> workspace;
    stage::TemporaryFolder runtimeFolder;
};

} // namespace kestrel::test
