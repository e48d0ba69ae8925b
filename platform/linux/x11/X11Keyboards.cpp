#include "platform/linux/x11/X11Keyboards.h"

#include "platform/linux/x11/KeyboardDevices.h"
#include "platform/linux/x11/ModifierKeysyms.h"
#include "platform/linux/x11/XTestControls.h"
#include "platform/linux/x11/XkbProtocol.h"

#include <xcb/xtest.h>

#include <utility>

namespace kestrel {

namespace {
// From XInput 2.1 on, the server reports keys also while another program grabs their keyboard.
constexpr std::uint16_t InputMajorVersion = 2;
constexpr std::uint16_t InputMinorVersion = 1;
} // namespace

X11Keyboards::X11Keyboards(X11Connection& connection,
    std::function<void(const XKeySet&)> userModifiersChanged,
    std::function<void(const XTestModifier&)> xtestModifierChanged)
    : m_connection(connection)
    , m_userModifiersChanged(std::move(userModifiersChanged))
    , m_xtestModifierChanged(std::move(xtestModifierChanged))
{
    m_connection.add(*this);
}

X11Keyboards::~X11Keyboards()
{
    m_connection.remove(*this);
}

void X11Keyboards::connectionOpened()
{
    beginExtensions();
    findDevices();
    switchControlsOff();
    turnToUserKeyboard();
}

void X11Keyboards::connectionLost()
{
    m_xtest.reset();
    m_userKeyboards.clear();
    m_keysOfUser.set();
    m_modifierKeys.reset();
    m_userModifiersChanged({});
}

void X11Keyboards::beginExtensions()
{
    xcb_connection_t* xcb = m_connection.xcb();
    xcb_prefetch_extension_data(xcb, &xcb_xkb_id);
    xcb_prefetch_extension_data(xcb, &xcb_input_id);
    const auto* xkb = xcb_get_extension_data(xcb, &xcb_xkb_id);
    const auto* input = xcb_get_extension_data(xcb, &xcb_input_id);
    m_xkbEvent = xkb && xkb->present ? xkb->first_event : std::uint8_t { 0 };
    m_inputOpcode = input && input->present ? input->major_opcode : std::uint8_t { 0 };
    m_inputEvent = input && input->present ? input->first_event : std::uint8_t { 0 };
    if (m_xkbEvent == 0 || m_inputOpcode == 0)
        return;
    const auto useXkb = xcb_xkb_use_extension(xcb, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    const auto useInput = xcb_input_xi_query_version(xcb, InputMajorVersion, InputMinorVersion);
    (void)m_connection.reply<xcb_xkb_use_extension_reply_t>(useXkb.sequence);
    (void)m_connection.reply<xcb_input_xi_query_version_reply_t>(useInput.sequence);
    selectInputEvents(XCB_INPUT_DEVICE_ALL, XCB_INPUT_XI_EVENT_MASK_HIERARCHY);
}

void X11Keyboards::selectInputEvents(DeviceId device, std::uint32_t mask)
{
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } const selection { { device, 1 }, mask };
    xcb_input_xi_select_events(m_connection.xcb(), m_connection.screen().root, 1, &selection.head);
}

void X11Keyboards::findDevices()
{
    const auto before = std::exchange(m_xtest, std::nullopt);
    m_userKeyboards.clear();
    m_keysOfUser.set();
    const auto found = m_inputOpcode != 0 ? KeyboardDevices::find(m_connection) : std::nullopt;
    if (!found)
        return tellModifiers();
    m_xtest = found->xtest;
    if (m_xtest != before)
        m_leftOff = 0;
    if (m_xtest)
        followModifiers(*m_xtest);
    for (const DeviceId device : found->users) {
        followKeys(device);
        followModifiers(device);
        XTestControls::follow(m_connection, static_cast<std::uint8_t>(device));
        const auto down = KeyboardDevices::keysDown(m_connection, device);
        m_userKeyboards[device]
            = { down.value_or(XKeySet().set()), down.value_or(XKeySet()) & modifierKeys() };
    }
    gatherKeysOfUser();
    tellModifiers();
}

void X11Keyboards::switchControlsOff()
{
    if (m_xtest)
        XTestControls::switchOff(m_connection, static_cast<std::uint8_t>(*m_xtest));
}

// Posts, on one of the user's keyboards, the release of a key that is not down.
void X11Keyboards::turnToUserKeyboard()
{
    // libxcb closes the connection on a request of an extension that the server does not have.
    const auto* xtest = xcb_get_extension_data(m_connection.xcb(), &xcb_test_id);
    if (m_userKeyboards.empty() || !xtest || !xtest->present)
        return;
    const auto device = static_cast<std::uint8_t>(m_userKeyboards.begin()->first);
    const auto type = static_cast<std::uint8_t>(m_inputEvent + XCB_INPUT_DEVICE_KEY_RELEASE);
    xcb_test_fake_input(m_connection.xcb(), type, xcb_get_setup(m_connection.xcb())->max_keycode,
        XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, device);
}

void X11Keyboards::followKeys(DeviceId device)
{
    selectInputEvents(
        device, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
}

void X11Keyboards::followModifiers(DeviceId device)
{
    xcb_xkb_select_events_details_t details {};
    details.affectState = XCB_XKB_STATE_PART_MODIFIER_BASE;
    details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_BASE;
    xcb_xkb_select_events_aux(
        m_connection.xcb(), device, XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, 0, 0, &details);
}

std::optional<XKeySet> X11Keyboards::keysDownOnXTest()
{
    return m_xtest ? KeyboardDevices::keysDown(m_connection, *m_xtest) : std::nullopt;
}

XKeySet X11Keyboards::modifiersDown(DeviceId device)
{
    return KeyboardDevices::keysDown(m_connection, device).value_or(XKeySet()) & modifierKeys();
}

const XKeySet& X11Keyboards::modifierKeys()
{
    if (!m_modifierKeys) {
        xcb_connection_t* xcb = m_connection.xcb();
        const auto first = xcb_get_setup(xcb)->min_keycode;
        const auto count = static_cast<std::uint8_t>(xcb_get_setup(xcb)->max_keycode - first + 1);
        const auto mapping = m_connection.reply<xcb_get_keyboard_mapping_reply_t>(
            xcb_get_keyboard_mapping(xcb, first, count).sequence);
        m_modifierKeys = mapping ? momentaryModifierKeys(*mapping, first) : XKeySet();
    }
    return *m_modifierKeys;
}

void X11Keyboards::gatherKeysOfUser()
{
    m_keysOfUser.reset();
    for (const auto& [device, keyboard] : m_userKeyboards)
        m_keysOfUser |= keyboard.down;
}

void X11Keyboards::tellModifiers() const
{
    XKeySet all;
    for (const auto& [device, keyboard] : m_userKeyboards)
        all |= keyboard.modifiers;
    m_userModifiersChanged(all);
}

void X11Keyboards::eventArrived(const xcb_generic_event_t& event)
{
    const auto type = event.response_type & 0x7f;
    if (type == XCB_MAPPING_NOTIFY) {
        // This event comes with every change from one keyboard to another, so the mapping is only
        // fetched again when it is needed.
        m_modifierKeys.reset();
    } else if (type == XCB_GE_GENERIC) {
        const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
        if (generic.extension == m_inputOpcode)
            inputEventArrived(generic);
    } else if (m_xkbEvent != 0 && type == m_xkbEvent) {
        xkbEventArrived(event);
    }
}

void X11Keyboards::inputEventArrived(const xcb_ge_generic_event_t& event)
{
    if (event.event_type == XCB_INPUT_HIERARCHY) {
        findDevices();
        switchControlsOff();
    } else if (event.event_type == XCB_INPUT_RAW_KEY_PRESS
        || event.event_type == XCB_INPUT_RAW_KEY_RELEASE) {
        keyEventArrived(reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event));
    }
}

// The event of a release has the same form.
void X11Keyboards::keyEventArrived(const xcb_input_raw_key_press_event_t& event)
{
    const auto user = m_userKeyboards.find(event.deviceid);
    if (user == m_userKeyboards.end() || event.detail >= user->second.down.size())
        return;
    user->second.down.set(event.detail, event.event_type == XCB_INPUT_RAW_KEY_PRESS);
    gatherKeysOfUser();
}

void X11Keyboards::modifiersChanged(const xcb_generic_event_t& event)
{
    const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    const auto user = m_userKeyboards.find(state.deviceID);
    if (user != m_userKeyboards.end()) {
        user->second.modifiers = state.baseMods == 0 ? XKeySet() : modifiersDown(state.deviceID);
        tellModifiers();
    } else if (m_xtest == state.deviceID && state.keycode != 0) {
        m_xtestModifierChanged({ state.keycode, state.eventType == XCB_KEY_PRESS,
            state.baseMods == 0, event.full_sequence });
    }
}

void X11Keyboards::xkbEventArrived(const xcb_generic_event_t& event)
{
    const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
    if (state.xkbType == XCB_XKB_STATE_NOTIFY) {
        modifiersChanged(event);
    } else if (state.xkbType == XCB_XKB_CONTROLS_NOTIFY) {
        controlsChanged(event);
    }
}

void X11Keyboards::controlsChanged(const xcb_generic_event_t& event)
{
    const auto& controls = reinterpret_cast<const xcb_xkb_controls_notify_event_t&>(event);
    if (m_xtest == controls.deviceID) {
        if ((controls.enabledControls & XTestControls::Unwanted) != 0)
            switchControlsOff();
    } else if (m_xtest && m_userKeyboards.contains(controls.deviceID)) {
        userControlsChanged(controls.enabledControlChanges, controls.enabledControls);
    }
}

void X11Keyboards::userControlsChanged(std::uint32_t changed, std::uint32_t enabled)
{
    const auto xtest = static_cast<std::uint8_t>(*m_xtest);
    const std::uint32_t off = changed & ~enabled & XTestControls::Unwanted;
    const std::uint32_t on = changed & enabled & m_leftOff;
    if (off != 0)
        m_leftOff |= XTestControls::leaveOff(m_connection, xtest, off);
    if (on != 0)
        XTestControls::switchOnAtEnd(m_connection, xtest, on);
    m_leftOff &= ~on;
}

} // namespace kestrel
