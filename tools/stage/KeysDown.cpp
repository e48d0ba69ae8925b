#include "tools/stage/KeysDown.h"

#include "tools/stage/XQuery.h"

#include <stdexcept>

namespace kestrel::stage {

std::vector<int> keysDown(const std::string& display)
{
    const XConnection connection = connectTo(display);
    const XReply<xcb_query_keymap_reply_t> reply(
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
