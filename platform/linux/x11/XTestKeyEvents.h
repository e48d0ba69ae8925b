#pragma once

#include "platform/KeyEvents.h"
#include "platform/linux/x11/HeldKeys.h"
#include "platform/linux/x11/X11Keyboards.h"
#include "platform/linux/x11/X11Session.h"

#include <array>
#include <memory>
#include <optional>

namespace kestrel {

// Posts keyboard events on X11 through XTEST. Releases all keys that it holds when the front
// application changes, when the connection comes back and when this object is destroyed. After a
// kill, the next start finds the held keys in a journal and releases them.
//
// An X key event carries the modifiers that are down in the server at its time, so a key-down
// presses the modifiers that its flags name and a key-up presses none. Modifiers that the user
// holds and the flags do not name are released for the moment of the key-down and pressed again
// right after it, all in one batch. Locks (Caps Lock, Num Lock) are left as they are, and so are
// modifiers that another program holds through XTEST.
class XTestKeyEvents final : public KeyEvents, private X11Connection::Listener, private KeyServer {
public:
    explicit XTestKeyEvents(std::shared_ptr<X11Session> session);
    ~XTestKeyEvents() override;

    Result post(
        KeyCode keyCode, Direction direction, ModifierFlags flags, AutoRepeat autoRepeat) override;
    Result postBare(KeyCode keyCode, Direction direction) override;

    void releaseAll() override;

private:
    void connectionOpened() override;
    void connectionLost() override;
    void eventArrived(const xcb_generic_event_t& event) override;

    unsigned post(const KeyStep& step) override;
    void flush() override;
    bool synchronise() override;
    std::optional<XKeySet> keysDown() override;

    void xtestModifierChanged(const X11Keyboards::XTestModifier& change);
    [[nodiscard]] bool isReady();
    [[nodiscard]] KeyLedger& ledgerForPress();
    Result send(const KeyPlan& plan);

    std::shared_ptr<X11Session> m_session;
    X11Connection& m_connection;
    HeldKeys m_held { *this };
    // Keys of all kinds that other programs held on the XTEST keyboard when the connection was
    // opened, and that we have not released since.
    XKeySet m_foreignKeys;
    // Modifier keys that other programs hold on the XTEST keyboard. What they held when the
    // connection was opened is here with keys of all kinds, of which only modifiers are used.
    XKeySet m_foreignModifiers;
    // Sequence numbers of our last press of each key on this connection, and of our last request
    // for it; 0 = none.
    std::array<unsigned, XKeySet().size()> m_lastPress {};
    std::array<unsigned, XKeySet().size()> m_lastRequest {};
    bool m_canPost = false;
    X11Keyboards m_keyboards;
};

} // namespace kestrel
