#include "tests/platform/linux/x11/KeyReceiver.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace kestrel::test {

namespace {
std::string nameOf(xcb_keycode_t key)
{
    static const std::map<int, std::string> names { { 23, "Tab" }, { 37, "Control" }, { 38, "A" },
        { 39, "S" }, { 40, "D" }, { 50, "Shift" }, { 62, "RightShift" }, { 64, "Alt" },
        { 66, "CapsLock" }, { 71, "F5" }, { 77, "NumLock" }, { 133, "Super" } };
    const auto found = names.find(key);
    return found != names.end() ? found->second : std::to_string(key);
}

std::string namesOf(std::uint16_t state)
{
    static constexpr std::array<std::pair<int, const char*>, 6> Names { { { 0x04, "Control" },
        { 0x01, "Shift" }, { 0x08, "Alt" }, { 0x40, "Super" }, { 0x02, "Lock" },
        { 0x10, "Num" } } };
    std::string names;
    for (const auto& [bit, name] : Names) {
        if ((state & bit) != 0)
            names.append(names.empty() ? " " : "+").append(name);
    }
    return names;
}
} // namespace

KeyReceiver::KeyReceiver(const std::string& display, std::string_view applicationClass, Map map)
    : XClient(display)
    , m_applicationClass(applicationClass)
    , m_window(xcb_generate_id(xcb()))
{
    const std::uint32_t mask
        = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(xcb(), XCB_COPY_FROM_PARENT, m_window, root(), 10, 10, 200, 100, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    std::string property = "the instance";
    property += '\0';
    property += applicationClass;
    property += '\0';
    setText(m_window, XCB_ATOM_WM_CLASS, property);
    setText(m_window, XCB_ATOM_WM_NAME, applicationClass);
    if (map == Map::Yes)
        this->map();
    synchronise();
}

void KeyReceiver::map()
{
    xcb_map_window(xcb(), m_window);
    synchronise();
}

bool KeyReceiver::isManaged() const
{
    const auto clients = words(root(), "_NET_CLIENT_LIST");
    return std::ranges::find(clients, m_window) != clients.end();
}

bool KeyReceiver::isActive() const
{
    return words(root(), "_NET_ACTIVE_WINDOW") == std::vector<std::uint32_t> { m_window };
}

void KeyReceiver::activate() const
{
    tell(m_window, "_NET_ACTIVE_WINDOW", { 2, XCB_CURRENT_TIME });
    synchronise();
}

void KeyReceiver::takeFocus() const
{
    xcb_set_input_focus(xcb(), XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
    synchronise();
}

bool KeyReceiver::hasFocus() const
{
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(xcb(), xcb_get_input_focus(xcb()), nullptr), &std::free);
    return reply && reply->focus == m_window;
}

std::string KeyReceiver::keys()
{
    synchronise();
    std::string text;
    m_presses.clear();
    m_times.clear();
    while (const Reply<xcb_generic_event_t> event { xcb_poll_for_event(xcb()), &std::free }) {
        const auto type = event->response_type & 0x7f;
        if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
            continue;
        const auto& key = reinterpret_cast<const xcb_key_press_event_t&>(*event);
        text.append(text.empty() ? "" : "; ").append(nameOf(key.detail));
        text.append(type == XCB_KEY_PRESS ? " down" : " up").append(namesOf(key.state));
        if (type == XCB_KEY_PRESS)
            m_presses.push_back(key);
        m_times.push_back(key.time);
    }
    return text;
}

} // namespace kestrel::test
