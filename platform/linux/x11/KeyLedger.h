#pragma once

#include "platform/KeyEvents.h"

#include <bitset>
#include <cstdint>
#include <span>
#include <vector>

namespace kestrel {

using XKeyCode = std::uint8_t;
using XKeySet = std::bitset<256>; // indexed by X keycode

// One key event for the XTEST keyboard.
struct KeyStep {
    XKeyCode key = 0;
    KeyEvents::Direction direction = KeyEvents::Direction::Up;
    std::uint32_t delayMs = 0; // pause after the previous step

    friend bool operator==(const KeyStep&, const KeyStep&) = default;
};

using KeyPlan = std::vector<KeyStep>;

// Knows which keys our XTEST keyboard holds down, and plans the key events that each request needs.
// Each operation assumes that its plan is posted. A plan is valid until the next operation.
//
// The X server keeps one "down" state per key for all keyboards together. A key-up that we post
// releases the user's key as well, and clients do not see a key-down of a key that is down already.
// So a key that anybody may hold is released before it is pressed.
//
// The ledger is told which modifier keys the user holds. It releases those that a press does not
// name for the moment of the press, and presses them again right after it. Our keyboard then holds
// such a key in the user's stead (a substitute press) until the user lets go of the real key.
class KeyLedger {
public:
    // Makes exactly these modifiers logically down and presses `key`. For a key that may be down
    // already, AutoRepeat::Yes makes the press a repeat for the receiver (up and down at one server
    // time), and AutoRepeat::No makes it a new press (down later than up).
    const KeyPlan& press(
        XKeyCode key, std::span<const XKeyCode> modifiers, KeyEvents::AutoRepeat autoRepeat);

    // Presses `key` and leaves the modifiers as they are.
    const KeyPlan& pressBare(XKeyCode key);

    // Releases `key`. The plan is empty for a key that we do not hold, and for a modifier that the
    // user holds too.
    const KeyPlan& release(XKeyCode key);

    // Releases all keys that we hold, except modifiers that the user holds too.
    const KeyPlan& releaseAll();

    // Tells the ledger which modifier keys are down on the user's own keyboards now. The plan
    // releases the substitutes of keys that the user has let go of.
    const KeyPlan& setUserModifiers(const XKeySet& keys);

    // Tells the ledger which keys of all kinds the user or another program holds down, or may hold.
    // Until the first call, these are all keys.
    void setForeignKeys(const XKeySet& keys) { m_foreignKeys = keys; }

    // Tells the ledger which keys other programs hold down on the keyboard through which we post. A
    // press that names such a modifier uses it as it is: our own release would take it from them.
    void setForeignModifiers(const XKeySet& keys) { m_foreignModifiers = keys; }

    // Forgets the keys that we held, because they are no longer held. The user's keys stay known.
    void forget();

    [[nodiscard]] const XKeySet& held() const { return m_held; }

private:
    void takeAwayUnnamed(const XKeySet& named);
    [[nodiscard]] bool mayBeDown(XKeyCode key) const;
    void takeFromHolders(XKeyCode key);
    void giveBack(const XKeySet& taken);
    void down(XKeyCode key, std::uint32_t delayMs = 0);
    void up(XKeyCode key);

    KeyPlan m_plan;
    XKeySet m_held; // keys that our keyboard holds, including substitutes
    XKeySet m_substitutes;
    XKeySet m_modifiers; // modifiers that we hold because a press named them
    XKeySet m_userModifiers;
    XKeySet m_foreignKeys = XKeySet().set();
    XKeySet m_foreignModifiers;
};

} // namespace kestrel
