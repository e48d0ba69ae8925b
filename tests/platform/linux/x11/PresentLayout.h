#pragma once

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <memory>

namespace kestrel::test {

// The keyboard layout of an X server at the time of the construction. Applications read key events
// by such a copy.
class PresentLayout {
public:
    explicit PresentLayout(xcb_connection_t* connection);

    // The keysym of the key with all the modifiers of the event.
    [[nodiscard]] xkb_keysym_t keysym(const xcb_key_press_event_t& event) const;

private:
    std::unique_ptr<xkb_context, decltype(&xkb_context_unref)> m_context;
    std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)> m_keymap;
};

} // namespace kestrel::test
