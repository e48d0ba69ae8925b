#include "tools/pro-tools/x11/XKeyReader.h"

#include "platform/linux/x11/XkbProtocol.h"

#include <QGuiApplication>

#include <xkbcommon/xkbcommon-x11.h>

#include <chrono>

namespace kestrel {

namespace {
xcb_connection_t* qtConnection()
{
    auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native ? native->connection() : nullptr;
}

xkb_keymap* coreKeymap(xcb_connection_t* connection)
{
    if (!connection)
        return nullptr;
    xkb_context* context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
    xkb_x11_setup_xkb_extension(connection, XKB_X11_MIN_MAJOR_XKB_VERSION,
        XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr,
        nullptr, nullptr);
    xkb_keymap* keymap = xkb_x11_keymap_new_from_device(context, connection,
        xkb_x11_get_core_keyboard_device_id(connection), XKB_KEYMAP_COMPILE_NO_FLAGS);
    xkb_context_unref(context);
    return keymap;
}

// With detectable auto-repeat the server sends a held key as downs only, which tells a repeat from
// a new press.
void makeRepeatsDetectable(xcb_connection_t* connection)
{
    if (connection)
        xcb_xkb_per_client_flags_unchecked(connection, XCB_XKB_ID_USE_CORE_KBD,
            XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
            XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
}

std::int64_t monotonicMicroseconds()
{
    return std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
} // namespace

XKeyReader::XKeyReader(KeyReceived received)
    : m_received(std::move(received))
    , m_keymap(coreKeymap(qtConnection()), &xkb_keymap_unref)
{
    makeRepeatsDetectable(qtConnection());
}

XKeyReader::~XKeyReader() = default;

bool XKeyReader::nativeEventFilter(const QByteArray& type, void* message, qintptr*)
{
    if (type != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const auto kind = event->response_type & 0x7f;
    if (kind != XCB_KEY_PRESS && kind != XCB_KEY_RELEASE)
        return false;
    const std::int64_t now = monotonicMicroseconds();
    const auto* key = reinterpret_cast<const xcb_key_press_event_t*>(event);
    const bool down = kind == XCB_KEY_PRESS;
    const bool repeat = down && m_down.test(key->detail);
    m_down.set(key->detail, down);
    m_received({ down, nameOf(key->detail), key->state, repeat, now });
    return false;
}

std::string XKeyReader::nameOf(xcb_keycode_t key) const
{
    const xkb_keysym_t* keysyms = nullptr;
    if (!m_keymap || xkb_keymap_key_get_syms_by_level(m_keymap.get(), key, 0, 0, &keysyms) < 1)
        return "key" + std::to_string(key);
    char name[64] = "";
    xkb_keysym_get_name(xkb_keysym_to_upper(*keysyms), name, sizeof name);
    return name;
}

std::unique_ptr<QAbstractNativeEventFilter> makeKeyReader(KeyReceived received)
{
    return std::make_unique<XKeyReader>(std::move(received));
}

bool setSecureInput(bool)
{
    return false;
}

} // namespace kestrel
