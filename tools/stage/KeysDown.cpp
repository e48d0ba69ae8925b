#include "tools/stage/KeysDown.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace kestrel::stage {

std::vector<int> keysDown(const std::string& display)
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(display.c_str(), nullptr), &xcb_disconnect);
    const std::unique_ptr<xcb_query_keymap_reply_t, decltype(&std::free)> reply(
        xcb_query_keymap_reply(connection.get(), xcb_query_keymap(connection.get()), nullptr),
        &std::free);
    if (!reply)
        throw std::runtime_error("display " + display + " does not answer");
    std::vector<int> keycodes;
    for (int keycode = 0; keycode < 256; ++keycode) {
        if (reply->keys[keycode / 8] & (1 << (keycode % 8)))
            keycodes.push_back(keycode);
    }
    return keycodes;
}

} // namespace kestrel::stage
