#include "platform/linux/x11/KeyboardDevices.h"

#include <string_view>

namespace kestrel::KeyboardDevices {

namespace {
constexpr std::string_view XTestSuffix = "XTEST keyboard";

std::string_view nameOf(const xcb_input_xi_device_info_t& device)
{
    return { xcb_input_xi_device_info_name(&device),
        static_cast<std::size_t>(xcb_input_xi_device_info_name_length(&device)) };
}

// The master keyboard that XInput pairs with the pointer of our client.
std::optional<Id> coreKeyboard(X11Connection& connection)
{
    xcb_connection_t* xcb = connection.xcb();
    const auto pointer = connection.reply<xcb_input_xi_get_client_pointer_reply_t>(
        xcb_input_xi_get_client_pointer(xcb, XCB_WINDOW_NONE).sequence);
    if (!pointer)
        return {};
    const auto devices = connection.reply<xcb_input_xi_query_device_reply_t>(
        xcb_input_xi_query_device(xcb, pointer->deviceid).sequence);
    if (!devices || devices->num_infos == 0)
        return {};
    return xcb_input_xi_query_device_infos_iterator(devices.get()).data->attachment;
}
} // namespace

std::optional<Found> find(X11Connection& connection)
{
    const auto core = coreKeyboard(connection);
    const auto devices = connection.reply<xcb_input_xi_query_device_reply_t>(
        xcb_input_xi_query_device(connection.xcb(), XCB_INPUT_DEVICE_ALL).sequence);
    if (!core || !devices)
        return {};
    Found found;
    for (auto each = xcb_input_xi_query_device_infos_iterator(devices.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        const auto& device = *each.data;
        if (device.type != XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD || device.attachment != *core)
            continue;
        if (nameOf(device).ends_with(XTestSuffix))
            found.xtest = device.deviceid;
        else if (device.enabled)
            found.users.push_back(device.deviceid);
    }
    return found;
}

std::optional<XKeySet> keysDown(X11Connection& connection, Id device)
{
    const auto state = connection.reply<xcb_input_query_device_state_reply_t>(
        xcb_input_query_device_state(connection.xcb(), static_cast<std::uint8_t>(device)).sequence);
    if (!state)
        return {};
    XKeySet keys;
    for (auto each = xcb_input_query_device_state_classes_iterator(state.get()); each.rem > 0;
         xcb_input_input_state_next(&each)) {
        if (each.data->class_id != XCB_INPUT_INPUT_CLASS_KEY)
            continue;
        const auto& key = reinterpret_cast<const xcb_input_key_state_t&>(*each.data);
        for (std::size_t code = 0; code < keys.size(); ++code)
            keys.set(code, (key.keys[code / 8] >> (code % 8) & 1) != 0);
    }
    return keys;
}

} // namespace kestrel::KeyboardDevices
