#pragma once

#include "platform/KeyEvents.h"

#include <bitset>
#include <cstdint>
#include <span>
#include <vector>

namespace kestrel {

using XKeyCode = std::uint8_t;
using XKeySet = std::bitset<256>; // by X keycode

// One key event for the XTEST keyboard.
struct KeyStep {
    XKeyCode key = 0;
    KeyEvents::Direction direction = KeyEvents::Direction::Up;
    std::uint32_t delayMs = 0; // after the step before

    friend bool operator==(const KeyStep&, const KeyStep&) = default;
};

using KeyPlan = std::vector<KeyStep>;

// What our XTEST keyboard holds down, and which steps bring it where a request wants it. Each
// operation takes its steps for posted. A plan is valid until the next one is made.
//
// The X server keeps one "down" per key for all keyboards together: a key-up posted by us lets go
// of the user's key as well, a key-down of a key that the user holds is seen by nobody. So the
// ledger is told which modifier keys the user holds, takes those that a press does not name away
// for the moment of the press, and gives them back behind it. A key given back is held by our
// keyboard in the user's stead ("stand-in"): it ends when the user lets go of the real one.
class KeyLedger {
public:
    // Makes the modifiers, and only those, logically down and gives `key` a fresh press. Whoever
    // holds the key loses it first. A press of a key that we hold already is a repeat for the
    // receiver (up and down at one server time) with AutoRepeat::Yes, and a press of its own,
    // later than the up, with AutoRepeat::No.
    const KeyPlan& press(
        XKeyCode key, std::span<const XKeyCode> modifiers, KeyEvents::AutoRepeat autoRepeat);

    // Leaves the modifiers as they are.
    const KeyPlan& pressBare(XKeyCode key);

    // Nothing for a key that we do not hold, nor for one that the user holds too.
    const KeyPlan& release(XKeyCode key);

    // Everything except what the user holds too.
    const KeyPlan& releaseAll();

    // The modifier keys that are down on the user's own keyboards now.
    const KeyPlan& setUserModifiers(const XKeySet& keys);

    // The keys of all kinds that the user or another program holds down, or may hold. Until the
    // first call, that is every key.
    void setForeignKeys(const XKeySet& keys) { m_foreignKeys = keys; }

    // We hold nothing any more, because what held it is gone. The user may.
    void forget();

    [[nodiscard]] const XKeySet& held() const { return m_held; }

private:
    void takeAwayUnnamed(const XKeySet& named);
    void takeFromHolders(XKeyCode key);
    void giveBack(const XKeySet& taken);
    void down(XKeyCode key, std::uint32_t delayMs = 0);
    void up(XKeyCode key);

    KeyPlan m_plan;
    XKeySet m_held; // by our keyboard, stand-ins among them
    XKeySet m_standIns;
    XKeySet m_modifiers; // pressed because a press named them
    XKeySet m_userModifiers;
    XKeySet m_foreignKeys = XKeySet().set();
};

} // namespace kestrel
