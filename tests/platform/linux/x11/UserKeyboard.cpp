#include "tests/platform/linux/x11/UserKeyboard.h"

#include "platform/linux/x11/XkbProtocol.h"

#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <stdexcept>

namespace kestrel::test {

UserKeyboard::UserKeyboard(const std::string& display)
    : XClient(display)
{
    m_inputEvent = xcb_get_extension_data(xcb(), &xcb_input_id)->first_event;
    const Reply<xcb_xkb_use_extension_reply_t> keyboard(
        xcb_xkb_use_extension_reply(xcb(), xcb_xkb_use_extension(xcb(), 1, 0), nullptr),
        &std::free);
    const Reply<xcb_input_xi_query_version_reply_t> input(
        xcb_input_xi_query_version_reply(xcb(), xcb_input_xi_query_version(xcb(), 2, 0), nullptr),
        &std::free);
    const Reply<xcb_input_xi_query_device_reply_t> devices(
        xcb_input_xi_query_device_reply(
            xcb(), xcb_input_xi_query_device(xcb(), XCB_INPUT_DEVICE_ALL), nullptr),
        &std::free);
    for (auto each = xcb_input_xi_query_device_infos_iterator(devices.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        if (each.data->type != XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD)
            continue;
        const std::string name(xcb_input_xi_device_info_name(each.data),
            static_cast<std::size_t>(xcb_input_xi_device_info_name_length(each.data)));
        (name.find("XTEST") == std::string::npos ? m_device : m_xtestDevice)
            = static_cast<std::uint8_t>(each.data->deviceid);
    }
    if (m_device == 0 || m_xtestDevice == 0)
        throw std::runtime_error("the X server has not the keyboards that are looked for");
}

void UserKeyboard::press(xcb_keycode_t key) const
{
    post(xcb(), true, key);
    synchronise();
}

void UserKeyboard::release(xcb_keycode_t key) const
{
    post(xcb(), false, key);
    synchronise();
}

void UserKeyboard::releaseThrough(xcb_connection_t* connection, xcb_keycode_t key) const
{
    post(connection, false, key);
}

void UserKeyboard::post(xcb_connection_t* connection, bool down, xcb_keycode_t key) const
{
    const int type = down ? XCB_INPUT_DEVICE_KEY_PRESS : XCB_INPUT_DEVICE_KEY_RELEASE;
    xcb_test_fake_input(connection, static_cast<std::uint8_t>(m_inputEvent + type), key,
        XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, m_device);
}

unsigned UserKeyboard::modifiers() const
{
    const Reply<xcb_xkb_get_state_reply_t> state(
        xcb_xkb_get_state_reply(xcb(), xcb_xkb_get_state(xcb(), XCB_XKB_ID_USE_CORE_KBD), nullptr),
        &std::free);
    return state->mods;
}

unsigned UserKeyboard::lockedModifiers() const
{
    const Reply<xcb_xkb_get_state_reply_t> state(
        xcb_xkb_get_state_reply(xcb(), xcb_xkb_get_state(xcb(), XCB_XKB_ID_USE_CORE_KBD), nullptr),
        &std::free);
    return state->lockedMods;
}

std::bitset<256> UserKeyboard::keysDown() const
{
    const Reply<xcb_query_keymap_reply_t> reply(
        xcb_query_keymap_reply(xcb(), xcb_query_keymap(xcb()), nullptr), &std::free);
    std::bitset<256> keys;
    for (std::size_t key = 0; key < keys.size(); ++key)
        keys.set(key, (reply->keys[key / 8] >> (key % 8) & 1) != 0);
    return keys;
}

bool UserKeyboard::repeats(std::uint8_t device) const
{
    const Reply<xcb_xkb_get_controls_reply_t> controls(
        xcb_xkb_get_controls_reply(xcb(), xcb_xkb_get_controls(xcb(), device), nullptr),
        &std::free);
    const Reply<xcb_input_get_feedback_control_reply_t> feedback(
        xcb_input_get_feedback_control_reply(
            xcb(), xcb_input_get_feedback_control(xcb(), device), nullptr),
        &std::free);
    bool global = false;
    for (auto each = xcb_input_get_feedback_control_feedbacks_iterator(feedback.get());
         each.rem > 0; xcb_input_feedback_state_next(&each)) {
        if (each.data->class_id == XCB_INPUT_FEEDBACK_CLASS_KEYBOARD)
            global = reinterpret_cast<const xcb_input_kbd_feedback_state_t*>(each.data)
                         ->global_auto_repeat
                != 0;
    }
    return global && (controls->enabledControls & XCB_XKB_BOOL_CTRL_REPEAT_KEYS) != 0;
}

} // namespace kestrel::test
