#pragma once

#include "platform/linux/x11/KeyLedger.h"

#include <xcb/xproto.h>

namespace kestrel {

// The keys that act as modifiers only while they are held. Locking keys (Caps Lock, Num Lock) are
// left out, because pressing and releasing one changes the user's lock state.
[[nodiscard]] XKeySet momentaryModifierKeys(
    const xcb_get_keyboard_mapping_reply_t& mapping, xcb_keycode_t firstKey);

} // namespace kestrel
