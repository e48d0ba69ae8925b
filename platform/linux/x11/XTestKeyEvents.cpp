#include "platform/linux/x11/XTestKeyEvents.h"

#include "platform/linux/x11/EvdevKeyMap.h"

#include <xcb/xtest.h>

#include <array>
#include <optional>
#include <span>

namespace kestrel {

namespace {
constexpr int EvdevOffset = 8; // an X keycode is the evdev code plus this
constexpr int MaxXKeyCode = 255;

struct NamedModifier {
    ModifierFlags flag;
    KeyCode keyCode;
};

constexpr std::array NamedModifiers {
    NamedModifier { Modifier::Control, ModifierKey::Control },
    NamedModifier { Modifier::Shift, ModifierKey::Shift },
    NamedModifier { Modifier::Option, ModifierKey::Option },
    NamedModifier { Modifier::Command, ModifierKey::Command },
};

std::optional<XKeyCode> xKeyCode(KeyCode keyCode)
{
    const auto evdev = EvdevKeyMap::evdevCode(keyCode);
    if (!evdev || *evdev + EvdevOffset > MaxXKeyCode)
        return {};
    return static_cast<XKeyCode>(*evdev + EvdevOffset);
}

XKeySet pressedBy(const KeyPlan& plan)
{
    XKeySet keys;
    for (const KeyStep& step : plan) {
        if (step.direction == KeyEvents::Direction::Down)
            keys.set(step.key);
    }
    return keys;
}
} // namespace

XTestKeyEvents::XTestKeyEvents(std::shared_ptr<X11Session> session)
    : m_session(std::move(session))
    , m_connection(m_session->connection)
    , m_keyboards(m_connection, [this](const XKeySet& keys) {
        if (m_connection.isUsable())
            send(m_ledger.setUserModifiers(keys));
    })
{
    m_connection.add(*this);
    m_session->front.setChanged([this] { releaseAll(); });
}

XTestKeyEvents::~XTestKeyEvents()
{
    m_session->front.setChanged({});
    if (m_connection.isUsable()) {
        send(m_ledger.setUserModifiers({}));
        releaseAll();
    }
    if (m_connection.isUsable()) {
        m_keyboards.turnToUserKeyboard();
        // The server may drop unread requests of a client that disconnects, so we wait for its
        // answer. Without an answer, the keys stay in the journal for the next start.
        if (synchronise())
            strikeReleased();
    }
    m_connection.remove(*this);
}

KeyEvents::Result XTestKeyEvents::post(
    KeyCode keyCode, Direction direction, ModifierFlags flags, AutoRepeat autoRepeat)
{
    const auto key = xKeyCode(keyCode);
    if (!key)
        return Result::UnknownKey;
    if (!isReady())
        return Result::Unavailable;
    if (direction == Direction::Up)
        return send(m_ledger.release(*key));
    m_ledger.setForeignKeys(m_keyboards.keysOfUser() | m_foreign);

    std::array<XKeyCode, NamedModifiers.size()> modifiers;
    std::size_t count = 0;
    for (const NamedModifier& modifier : NamedModifiers) {
        if ((flags & modifier.flag) != 0)
            modifiers[count++] = *xKeyCode(modifier.keyCode);
    }
    return send(m_ledger.press(*key, std::span(modifiers).first(count), autoRepeat));
}

KeyEvents::Result XTestKeyEvents::postBare(KeyCode keyCode, Direction direction)
{
    const auto key = xKeyCode(keyCode);
    if (!key)
        return Result::UnknownKey;
    if (!isReady())
        return Result::Unavailable;
    m_ledger.setForeignKeys(m_keyboards.keysOfUser() | m_foreign);
    return send(direction == Direction::Down ? m_ledger.pressBare(*key) : m_ledger.release(*key));
}

void XTestKeyEvents::releaseAll()
{
    if (m_connection.isUsable())
        send(m_ledger.releaseAll());
}

void XTestKeyEvents::connectionOpened()
{
    const auto* xtest = xcb_get_extension_data(m_connection.xcb(), &xcb_test_id);
    m_canPost = xtest && xtest->present;
    openJournal();
    if (!m_canPost)
        return;
    letGoOfWhatWasLeftDown();
    m_foreign = m_keyboards.keysDownOnXTest().value_or(XKeySet()) & ~m_ledger.held();
}

// The server may still hold keys that were pressed through the lost connection. The next connection
// tells anew which keys the user holds.
void XTestKeyEvents::connectionLost()
{
    m_leftDown |= m_ledger.held() | m_released;
    m_released.reset();
    m_ledger = {};
    m_canPost = false;
}

// The server handles our requests in order: an event with the number of our last release or a later
// one shows that the release is done.
void XTestKeyEvents::eventArrived(const xcb_generic_event_t& event)
{
    if (m_released.any() && static_cast<std::int32_t>(event.full_sequence - m_lastRelease) >= 0)
        strikeReleased();
}

void XTestKeyEvents::openJournal()
{
    const std::string path = HeldKeysJournal::pathFor(m_connection.displayName());
    if (m_journal.isOpen() && path == m_journalPath)
        return;
    m_journal = {}; // releases the lock, which would keep the new journal from opening
    m_journal = HeldKeysJournal(path);
    m_journalPath = path;
}

// Releases the keys that a killed run, or we ourselves on a broken connection, left down.
void XTestKeyEvents::letGoOfWhatWasLeftDown()
{
    const XKeySet left = m_journal.keys() | m_leftDown | m_ledger.held();
    if (left.none())
        return;
    const XKeySet down = left & m_keyboards.keysDownOnXTest().value_or(left);
    for (std::size_t key = 0; key < down.size(); ++key) {
        if (down.test(key))
            xcb_test_fake_input(m_connection.xcb(), XCB_KEY_RELEASE, static_cast<XKeyCode>(key),
                XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0, 0);
    }
    if (!synchronise())
        return;
    m_leftDown.reset();
    m_ledger.forget();
    m_released = left;
    strikeReleased();
}

void XTestKeyEvents::strikeReleased()
{
    m_journal.strike(m_released);
    m_released.reset();
}

bool XTestKeyEvents::isReady()
{
    return m_connection.keepsUp() && m_canPost;
}

// The keys enter the journal before the server gets their presses. They are struck out once the
// server has sent anything after their release.
KeyEvents::Result XTestKeyEvents::send(const KeyPlan& plan)
{
    if (!m_canPost)
        return Result::Unavailable;
    m_journal.enter(pressedBy(plan));
    for (const KeyStep& step : plan) {
        const bool down = step.direction == Direction::Down;
        const auto request
            = xcb_test_fake_input(m_connection.xcb(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE,
                step.key, step.delayMs, XCB_WINDOW_NONE, 0, 0, 0);
        m_released.set(step.key, !down);
        if (!down) {
            m_lastRelease = request.sequence;
            m_foreign.reset(step.key);
        }
    }
    if (plan.empty())
        return Result::Posted;
    m_connection.flush();
    return m_connection.isUsable() ? Result::Posted : Result::Unavailable;
}

bool XTestKeyEvents::synchronise()
{
    const auto answer = xcb_get_input_focus(m_connection.xcb());
    return m_connection.reply<xcb_get_input_focus_reply_t>(answer.sequence) != nullptr;
}

} // namespace kestrel
