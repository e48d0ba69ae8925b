#include "platform/linux/x11/XTestKeyEvents.h"

#include "platform/linux/x11/EvdevKeyMap.h"

#include <xcb/xtest.h>

#include <array>
#include <optional>
#include <span>

namespace kestrel {

namespace {
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
    if (!evdev || *evdev + EvdevKeyMap::XOffset > MaxXKeyCode)
        return {};
    return static_cast<XKeyCode>(*evdev + EvdevKeyMap::XOffset);
}
} // namespace

XTestKeyEvents::XTestKeyEvents(std::shared_ptr<X11Session> session)
    : m_session(std::move(session))
    , m_connection(m_session->connection)
    , m_keyboards(
          m_connection,
          [this](const XKeySet& keys) {
              if (m_connection.isUsable())
                  send(m_held.ledger().setUserModifiers(keys));
          },
          [this](const X11Keyboards::XTestModifier& change) { xtestModifierChanged(change); })
{
    m_connection.add(*this);
    m_session->front.setChanged([this] { releaseAll(); });
}

XTestKeyEvents::~XTestKeyEvents()
{
    m_session->front.setChanged({});
    if (m_connection.isUsable() && m_canPost)
        m_held.releaseForGood();
    if (m_connection.isUsable()) {
        m_keyboards.turnToUserKeyboard();
        m_held.settle();
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
        return send(m_held.ledger().release(*key));

    std::array<XKeyCode, NamedModifiers.size()> modifiers;
    std::size_t count = 0;
    for (const NamedModifier& modifier : NamedModifiers) {
        if ((flags & modifier.flag) != 0)
            modifiers[count++] = *xKeyCode(modifier.keyCode);
    }
    return send(ledgerForPress().press(*key, std::span(modifiers).first(count), autoRepeat));
}

KeyEvents::Result XTestKeyEvents::postBare(KeyCode keyCode, Direction direction)
{
    const auto key = xKeyCode(keyCode);
    if (!key)
        return Result::UnknownKey;
    if (!isReady())
        return Result::Unavailable;
    return send(direction == Direction::Down ? ledgerForPress().pressBare(*key)
                                             : m_held.ledger().release(*key));
}

void XTestKeyEvents::releaseAll()
{
    if (m_connection.isUsable())
        send(m_held.ledger().releaseAll());
}

void XTestKeyEvents::connectionOpened()
{
    const auto* xtest = xcb_get_extension_data(m_connection.xcb(), &xcb_test_id);
    m_canPost = xtest && xtest->present;
    m_held.openJournal(HeldKeysJournal::pathFor(m_connection.displayName()));
    if (!m_canPost)
        return;
    m_held.letGoOfWhatWasLeftDown();
    const auto down = keysDown();
    m_foreignKeys = down.value_or(XKeySet().set()) & ~m_held.ledger().held();
    m_foreignModifiers = down.value_or(XKeySet()) & ~m_held.ledger().held();
}

void XTestKeyEvents::connectionLost()
{
    m_held.connectionLost();
    m_lastPress = {};
    m_lastRequest = {};
    m_canPost = false;
}

// The server handles our requests in order, and an event has the number of the last one before it.
void XTestKeyEvents::eventArrived(const xcb_generic_event_t& event)
{
    m_held.answered(event.full_sequence);
}

// The event of a press of ours bears the number of that press. An event from before our last
// request for the key is out of date.
void XTestKeyEvents::xtestModifierChanged(const X11Keyboards::XTestModifier& change)
{
    if (change.noneIsDown)
        m_foreignModifiers.reset(); // also those whose release was told for another key
    else if (static_cast<std::int32_t>(change.sequence - m_lastRequest[change.key]) >= 0)
        m_foreignModifiers.set(
            change.key, change.isDown && change.sequence != m_lastPress[change.key]);
}

KeyLedger& XTestKeyEvents::ledgerForPress()
{
    KeyLedger& ledger = m_held.ledger();
    ledger.setForeignKeys(m_keyboards.keysOfUser() | m_foreignKeys);
    ledger.setForeignModifiers(m_foreignModifiers);
    return ledger;
}

bool XTestKeyEvents::isReady()
{
    return m_connection.keepsUp() && m_canPost;
}

KeyEvents::Result XTestKeyEvents::send(const KeyPlan& plan)
{
    if (!m_canPost)
        return Result::Unavailable;
    if (plan.empty())
        return Result::Posted;
    m_held.post(plan);
    return m_connection.isUsable() ? Result::Posted : Result::Unavailable;
}

unsigned XTestKeyEvents::post(const KeyStep& step)
{
    const bool down = step.direction == Direction::Down;
    const auto request = xcb_test_fake_input(m_connection.xcb(),
        down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, step.key, step.delayMs, XCB_WINDOW_NONE, 0, 0, 0);
    m_lastRequest[step.key] = request.sequence;
    if (down) {
        m_lastPress[step.key] = request.sequence;
    } else {
        m_foreignKeys.reset(step.key);
        m_foreignModifiers.reset(step.key);
    }
    return request.sequence;
}

void XTestKeyEvents::flush()
{
    m_connection.flush();
}

bool XTestKeyEvents::synchronise()
{
    const auto answer = xcb_get_input_focus(m_connection.xcb());
    return m_connection.reply<xcb_get_input_focus_reply_t>(answer.sequence) != nullptr;
}

std::optional<XKeySet> XTestKeyEvents::keysDown()
{
    return m_keyboards.keysDownOnXTest();
}

} // namespace kestrel
