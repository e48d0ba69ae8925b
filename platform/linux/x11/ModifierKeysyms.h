#pragma once

#include "platform/linux/x11/KeyLedger.h"

#include <xcb/xproto.h>

namespace kestrel {

// Keys that are modifiers as long as they are held. Those that lock (Caps Lock, Num Lock) are none
// of them: to press and release one is to change the user's state.
[[nodiscard]] XKeySet momentaryModifierKeys(
    const xcb_get_keyboard_mapping_reply_t& mapping, xcb_keycode_t firstKey);

} // namespace kestrel
