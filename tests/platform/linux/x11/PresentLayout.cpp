#include "tests/platform/linux/x11/PresentLayout.h"

#include <stdexcept>

namespace kestrel::test {

PresentLayout::PresentLayout(xcb_connection_t* connection)
    : m_context(xkb_context_new(XKB_CONTEXT_NO_FLAGS), &xkb_context_unref)
    , m_keymap(nullptr, &xkb_keymap_unref)
{
    xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION,
        XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr,
        nullptr, nullptr);
    m_keymap.reset(xkb_x11_keymap_new_from_device(m_context.get(), connection,
        xkb_x11_get_core_keyboard_device_id(connection), XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!m_keymap)
        throw std::runtime_error("the X server does not tell its keyboard layout");
}

xkb_keysym_t PresentLayout::keysym(const xcb_key_press_event_t& event) const
{
    const std::unique_ptr<xkb_state, decltype(&xkb_state_unref)> state(
        xkb_state_new(m_keymap.get()), &xkb_state_unref);
    xkb_state_update_mask(state.get(), event.state & 0xFFu, 0, 0, 0, 0, event.state >> 13 & 3u);
    return xkb_state_key_get_one_sym(state.get(), event.detail);
}

} // namespace kestrel::test
