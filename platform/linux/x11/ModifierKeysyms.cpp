#include "platform/linux/x11/ModifierKeysyms.h"

#include <xkbcommon/xkbcommon-keysyms.h>

namespace kestrel {

namespace {
bool isMomentaryModifier(xcb_keysym_t keysym)
{
    switch (keysym) {
    case XKB_KEY_Shift_L:
    case XKB_KEY_Shift_R:
    case XKB_KEY_Control_L:
    case XKB_KEY_Control_R:
    case XKB_KEY_Meta_L:
    case XKB_KEY_Meta_R:
    case XKB_KEY_Alt_L:
    case XKB_KEY_Alt_R:
    case XKB_KEY_Super_L:
    case XKB_KEY_Super_R:
    case XKB_KEY_Hyper_L:
    case XKB_KEY_Hyper_R:
    case XKB_KEY_Mode_switch:
    case XKB_KEY_ISO_Level3_Shift:
    case XKB_KEY_ISO_Level5_Shift:
        return true;
    default:
        return false;
    }
}
} // namespace

XKeySet momentaryModifierKeys(
    const xcb_get_keyboard_mapping_reply_t& mapping, xcb_keycode_t firstKey)
{
    XKeySet keys;
    const xcb_keysym_t* keysyms = xcb_get_keyboard_mapping_keysyms(&mapping);
    const auto count = static_cast<std::size_t>(xcb_get_keyboard_mapping_keysyms_length(&mapping));
    const std::size_t perKey = mapping.keysyms_per_keycode;
    for (std::size_t index = 0; perKey > 0 && index + perKey <= count; index += perKey) {
        const std::size_t key = firstKey + index / perKey;
        if (key < keys.size() && isMomentaryModifier(keysyms[index]))
            keys.set(key);
    }
    return keys;
}

} // namespace kestrel
