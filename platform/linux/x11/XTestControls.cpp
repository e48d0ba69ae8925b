#include "platform/linux/x11/XTestControls.h"

#include <sys/uio.h>
#include <xcb/xcbext.h>
#include <xcb/xinput.h>

namespace kestrel::XTestControls {

namespace {
constexpr std::uint32_t RepeatKeys = XCB_XKB_BOOL_CTRL_REPEAT_KEYS;
constexpr std::uint32_t AutoReset = XCB_XKB_PER_CLIENT_FLAG_AUTO_RESET_CONTROLS;

std::uint32_t unwantedControls(X11Connection& connection, std::uint8_t device)
{
    const auto controls = connection.reply<xcb_xkb_get_controls_reply_t>(
        xcb_xkb_get_controls(connection.xcb(), device).sequence);
    return controls ? controls->enabledControls & Unwanted : 0;
}

bool promisesToSwitchOnAgain(X11Connection& connection, std::uint8_t device, std::uint32_t controls)
{
    const auto flags = connection.reply<xcb_xkb_per_client_flags_reply_t>(xcb_xkb_per_client_flags(
        connection.xcb(), device, AutoReset, AutoReset, controls, controls, controls)
                                                                              .sequence);
    return flags && (flags->value & AutoReset) != 0 && (flags->autoCtrls & controls) == controls
        && (flags->autoCtrlsValues & controls) == controls;
}

void setOff(X11Connection& connection, std::uint8_t device, std::uint32_t controls)
{
    static constexpr std::uint8_t NoKeys[32] {};
    xcb_xkb_set_controls(connection.xcb(), device, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, controls, 0, 0,
        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, NoKeys);
}

// The server keeps the repeat setting twice, as an XKB control and as the feedback setting of the
// device, and a key repeats only when both are on. Switching the control off also switches the
// feedback setting off, but the server's reset at the end of our connection restores only the
// control. So the feedback setting is switched on again at once.
//
// The request is built by hand, because libxcb's own function takes it for one that is too long and
// closes the connection.
void setFeedbackRepeatOn(X11Connection& connection, std::uint8_t device)
{
    struct {
        xcb_input_change_feedback_control_request_t head;
        xcb_input_kbd_feedback_ctl_t keyboard;
    } request {};
    static_assert(sizeof request == 32);
    request.head.mask = XCB_INPUT_CHANGE_FEEDBACK_CONTROL_MASK_AUTO_REPEAT_MODE;
    request.head.device_id = device;
    request.keyboard.class_id = XCB_INPUT_FEEDBACK_CLASS_KEYBOARD;
    request.keyboard.len = sizeof request.keyboard;
    request.keyboard.auto_repeat_mode = XCB_AUTO_REPEAT_MODE_ON;

    // xcb_send_request() uses the two entries before the first one itself.
    iovec parts[3] {};
    parts[2] = { &request, sizeof request };
    static constexpr xcb_protocol_request_t Form { 1, &xcb_input_id,
        XCB_INPUT_CHANGE_FEEDBACK_CONTROL, 1 };
    xcb_send_request(connection.xcb(), 0, parts + 2, &Form);
}
} // namespace

void follow(X11Connection& connection, std::uint8_t device)
{
    xcb_xkb_select_events_details_t details {};
    details.affectCtrls = XCB_XKB_CONTROL_CONTROLS_ENABLED;
    details.ctrlDetails = XCB_XKB_CONTROL_CONTROLS_ENABLED;
    xcb_xkb_select_events_aux(
        connection.xcb(), device, XCB_XKB_EVENT_TYPE_CONTROLS_NOTIFY, 0, 0, 0, 0, &details);
}

std::uint32_t leaveOff(X11Connection& connection, std::uint8_t xtestDevice, std::uint32_t controls)
{
    const auto before = connection.reply<xcb_xkb_per_client_flags_reply_t>(
        xcb_xkb_per_client_flags(connection.xcb(), xtestDevice, 0, 0, 0, 0, 0).sequence);
    if (!before)
        return 0;
    const std::uint32_t owed = controls & before->autoCtrls & before->autoCtrlsValues;
    (void)connection.reply<xcb_xkb_per_client_flags_reply_t>(xcb_xkb_per_client_flags(
        connection.xcb(), xtestDevice, AutoReset, AutoReset, controls, 0, 0)
                                                                 .sequence);
    return owed;
}

void switchOnAtEnd(X11Connection& connection, std::uint8_t xtestDevice, std::uint32_t controls)
{
    (void)promisesToSwitchOnAgain(connection, xtestDevice, controls);
}

void switchOff(X11Connection& connection, std::uint8_t xtestDevice)
{
    follow(connection, xtestDevice);
    const std::uint32_t controls = unwantedControls(connection, xtestDevice);
    if (controls == 0 || !promisesToSwitchOnAgain(connection, xtestDevice, controls))
        return;
    setOff(connection, xtestDevice, controls);
    if ((controls & RepeatKeys) != 0)
        setFeedbackRepeatOn(connection, xtestDevice);
}

} // namespace kestrel::XTestControls
