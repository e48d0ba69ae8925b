#include "platform/linux/x11/X11WindowTraits.h"

#include "platform/linux/x11/X11Atoms.h"

#include <algorithm>
#include <array>

namespace kestrel {

namespace {
using Words = std::vector<std::uint32_t>;

constexpr std::uint32_t MaxWords = 64;

// Layout of WM_NORMAL_HINTS: word 0 holds the flags, the four words from 11 on the two aspects.
constexpr std::size_t SizeHintsWords = 18;
constexpr std::uint32_t AspectFlag = 1u << 7;
constexpr std::size_t AspectIndex = 11;

// Layout of WM_HINTS: word 0 holds the flags, word 1 the input hint.
constexpr std::size_t WindowHintsWords = 9;
constexpr std::uint32_t InputFlag = 1;

constexpr std::uint32_t AddState = 1;
constexpr std::uint32_t FromApplication = 1;

bool addMissing(Words& words, std::initializer_list<std::uint32_t> wanted)
{
    const auto before = words.size();
    for (const std::uint32_t word : wanted) {
        if (std::ranges::find(words, word) == words.end())
            words.push_back(word);
    }
    return words.size() != before;
}
} // namespace

X11WindowTraits::X11WindowTraits(std::shared_ptr<X11Session> session)
    : m_session(std::move(session))
    , m_connection(m_session->connection)
{
    m_connection.add(*this);
}

X11WindowTraits::~X11WindowTraits()
{
    m_connection.remove(*this);
}

void X11WindowTraits::setContentAspectRatio(NativeWindow window, int width, int height)
{
    Traits* traits = traitsOf(window);
    if (!traits || width <= 0 || height <= 0)
        return;
    traits->aspectWidth = static_cast<std::uint32_t>(width);
    traits->aspectHeight = static_cast<std::uint32_t>(height);
    applyAspect(static_cast<xcb_window_t>(window), *traits);
    m_connection.flush();
}

void X11WindowTraits::setFloating(NativeWindow window)
{
    Traits* traits = traitsOf(window);
    if (!traits)
        return;
    traits->floating = true;
    applyFloating(static_cast<xcb_window_t>(window));
    m_connection.flush();
}

void X11WindowTraits::setNeverFocused(NativeWindow window)
{
    Traits* traits = traitsOf(window);
    if (!traits)
        return;
    traits->neverFocused = true;
    applyInputHint(static_cast<xcb_window_t>(window));
    refuseTakeFocus(static_cast<xcb_window_t>(window));
    m_connection.flush();
}

// Qt calls a window maximised only when it is so in both directions.
bool X11WindowTraits::isSizeGiven(NativeWindow window)
{
    if (window == 0 || !m_connection.ensureOpen())
        return false;
    const Words states = X11Atoms::words(
        m_connection, static_cast<xcb_window_t>(window), m_atoms.netWmState, MaxWords);
    return std::ranges::any_of(states, [this](std::uint32_t state) {
        return state == m_atoms.maximisedWide || state == m_atoms.maximisedHigh;
    });
}

X11WindowTraits::Traits* X11WindowTraits::traitsOf(NativeWindow window)
{
    if (window == 0 || !m_connection.ensureOpen())
        return nullptr;
    const auto id = static_cast<xcb_window_t>(window);
    const auto [found, isNew] = m_traits.try_emplace(id);
    if (isNew)
        m_connection.listenTo(id);
    return &found->second;
}

void X11WindowTraits::connectionOpened()
{
    const auto atom
        = [this](std::string_view name) { return X11Atoms::intern(m_connection, name); };
    m_atoms = { atom("WM_PROTOCOLS"), atom("WM_TAKE_FOCUS"), atom("_NET_WM_STATE"),
        atom("_NET_WM_STATE_ABOVE"), atom("_NET_WM_STATE_SKIP_TASKBAR"),
        atom("_NET_WM_STATE_SKIP_PAGER"), atom("_NET_WM_WINDOW_TYPE"),
        atom("_NET_WM_WINDOW_TYPE_UTILITY"), atom("_NET_WM_STATE_MAXIMIZED_HORZ"),
        atom("_NET_WM_STATE_MAXIMIZED_VERT") };
}

// Qt's windows are gone together with the server.
void X11WindowTraits::connectionLost()
{
    m_traits.clear();
}

void X11WindowTraits::eventArrived(const xcb_generic_event_t& event)
{
    const auto type = event.response_type & 0x7f;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (const auto found = m_traits.find(property.window); found != m_traits.end())
            propertyChanged(property.window, property.atom, found->second);
    } else if (type == XCB_MAP_NOTIFY) {
        const auto window = reinterpret_cast<const xcb_map_notify_event_t&>(event).window;
        const auto found = m_traits.find(window);
        if (found != m_traits.end() && found->second.floating)
            floatMapped(window);
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto window = reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window;
        if (m_traits.erase(window) > 0)
            m_connection.stopListeningTo(window);
    }
}

void X11WindowTraits::propertyChanged(
    xcb_window_t window, xcb_atom_t property, const Traits& traits)
{
    if (property == XCB_ATOM_WM_NORMAL_HINTS && traits.aspectWidth > 0)
        applyAspect(window, traits);
    else if (property == XCB_ATOM_WM_HINTS && traits.neverFocused)
        applyInputHint(window);
    else if (property == m_atoms.wmProtocols && traits.neverFocused)
        refuseTakeFocus(window);
}

void X11WindowTraits::applyAspect(xcb_window_t window, const Traits& traits)
{
    Words hints = X11Atoms::words(m_connection, window, XCB_ATOM_WM_NORMAL_HINTS, MaxWords);
    const Words before = hints;
    hints.resize(SizeHintsWords);
    hints[0] |= AspectFlag;
    const std::array aspect { traits.aspectWidth, traits.aspectHeight, traits.aspectWidth,
        traits.aspectHeight };
    std::ranges::copy(aspect, hints.begin() + AspectIndex);
    if (hints != before)
        replace(window, XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
}

// The properties of an unmapped window say how it is to appear. The window manager owns the state
// of a mapped window and must be asked to change it.
void X11WindowTraits::applyFloating(xcb_window_t window)
{
    Words types = X11Atoms::words(m_connection, window, m_atoms.netWmWindowType, MaxWords);
    if (std::ranges::find(types, m_atoms.typeUtility) == types.end()) {
        types.insert(types.begin(), m_atoms.typeUtility);
        replace(window, m_atoms.netWmWindowType, XCB_ATOM_ATOM, types);
    }
    const auto attributes = m_connection.reply<xcb_get_window_attributes_reply_t>(
        xcb_get_window_attributes(m_connection.xcb(), window).sequence);
    if (!attributes)
        return;
    if (attributes->map_state != XCB_MAP_STATE_UNMAPPED) {
        floatMapped(window);
        return;
    }
    Words states = X11Atoms::words(m_connection, window, m_atoms.netWmState, MaxWords);
    if (addMissing(states, { m_atoms.stateAbove, m_atoms.skipTaskbar, m_atoms.skipPager }))
        replace(window, m_atoms.netWmState, XCB_ATOM_ATOM, states);
}

void X11WindowTraits::floatMapped(xcb_window_t window)
{
    const auto add = [this, window](xcb_atom_t first, xcb_atom_t second) {
        xcb_client_message_event_t event {};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = window;
        event.type = m_atoms.netWmState;
        const std::array<std::uint32_t, 4> data { AddState, first, second, FromApplication };
        std::ranges::copy(data, event.data.data32);
        xcb_send_event(m_connection.xcb(), 0, m_connection.screen().root,
            XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
            reinterpret_cast<const char*>(&event));
    };
    add(m_atoms.stateAbove, XCB_ATOM_NONE);
    add(m_atoms.skipTaskbar, m_atoms.skipPager);
}

void X11WindowTraits::applyInputHint(xcb_window_t window)
{
    Words hints = X11Atoms::words(m_connection, window, XCB_ATOM_WM_HINTS, MaxWords);
    const Words before = hints;
    hints.resize(WindowHintsWords);
    hints[0] |= InputFlag;
    hints[1] = 0;
    if (hints != before)
        replace(window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, hints);
}

void X11WindowTraits::refuseTakeFocus(xcb_window_t window)
{
    Words protocols = X11Atoms::words(m_connection, window, m_atoms.wmProtocols, MaxWords);
    if (std::erase(protocols, m_atoms.wmTakeFocus) > 0)
        replace(window, m_atoms.wmProtocols, XCB_ATOM_ATOM, protocols);
}

void X11WindowTraits::replace(
    xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const Words& words)
{
    if (m_connection.isOpen())
        xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
            static_cast<std::uint32_t>(words.size()), words.data());
}

} // namespace kestrel
