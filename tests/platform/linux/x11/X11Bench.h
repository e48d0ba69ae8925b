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

#include <optional>

namespace kestrel::test {

// A private X server with a window manager, a workstation window in front, the adapters under
// test, and journals of its own.
class X11Bench : public ::testing::Test {
protected:
    static constexpr KeyCode KeyA = 0, KeyS = 1, KeyD = 2, KeyF5 = 96;

    explicit X11Bench(bool windowManager = true);
    ~X11Bench() override;

    void start(); // the adapters
    void stop();
    void bringToFront(KeyReceiver& receiver);
    void settleWindowManager();

    KeyEvents::Result press(KeyCode key, ModifierFlags flags = 0,
        KeyEvents::AutoRepeat autoRepeat = KeyEvents::AutoRepeat::No);
    KeyEvents::Result release(KeyCode key, ModifierFlags flags = 0);
    void releaseModifiers(ModifierFlags flags);
    // As the program posts a console key: the main key, then each modifier's own key-up.
    void pressShortcut(KeyCode key, ModifierFlags flags);
    void releaseShortcut(KeyCode key, ModifierFlags flags);

    // What the receiver got once the server has done all that the adapters asked for.
    std::string received(KeyReceiver& receiver);
    std::string received() { return received(*workstation); }
    void settle(); // the server has done all, and the adapters have heard of it

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
