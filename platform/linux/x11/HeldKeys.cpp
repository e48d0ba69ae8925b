#include "platform/linux/x11/HeldKeys.h"

namespace kestrel {

namespace {
using Direction = KeyEvents::Direction;

XKeySet pressedBy(const KeyPlan& plan)
{
    XKeySet keys;
    for (const KeyStep& step : plan) {
        if (step.direction == Direction::Down)
            keys.set(step.key);
    }
    return keys;
}
} // namespace

HeldKeys::HeldKeys(KeyServer& server)
    : m_server(server)
{
}

void HeldKeys::openJournal(const std::string& path)
{
    if (m_journal.isOpen() && path == m_journalPath)
        return;
    m_journal = {}; // releases the lock, which would keep the new journal from opening
    m_journal = HeldKeysJournal(path);
    m_journalPath = path;
}

void HeldKeys::post(const KeyPlan& plan)
{
    queue(plan);
    if (!plan.empty())
        m_server.flush();
}

void HeldKeys::queue(const KeyPlan& plan)
{
    m_journal.enter(pressedBy(plan));
    for (const KeyStep& step : plan) {
        const bool down = step.direction == Direction::Down;
        const unsigned request = m_server.post(step);
        m_released.set(step.key, !down);
        if (!down)
            m_lastRelease = request;
    }
}

void HeldKeys::letGoOfWhatWasLeftDown()
{
    const XKeySet left = m_journal.keys() | m_leftDown | m_ledger.held();
    if (left.none())
        return;
    const XKeySet down = left & m_server.keysDown().value_or(left);
    for (std::size_t key = 0; key < down.size(); ++key) {
        if (down.test(key))
            m_server.post({ static_cast<XKeyCode>(key), Direction::Up });
    }
    if (!m_server.synchronise())
        return;
    m_leftDown.reset();
    m_ledger.forget();
    m_released = left;
    strikeReleased();
}

void HeldKeys::answered(unsigned request)
{
    if (m_released.any() && static_cast<std::int32_t>(request - m_lastRelease) >= 0)
        strikeReleased();
}

// The server may still hold keys that were pressed through the lost connection. The next connection
// tells anew which keys the user holds.
void HeldKeys::connectionLost()
{
    m_leftDown |= m_ledger.held() | m_released;
    m_released.reset();
    m_ledger = {};
}

void HeldKeys::releaseForGood()
{
    queue(m_ledger.setUserModifiers({}));
    queue(m_ledger.releaseAll());
    m_server.flush();
}

void HeldKeys::settle()
{
    if (m_server.synchronise())
        strikeReleased();
}

void HeldKeys::strikeReleased()
{
    m_journal.strike(m_released);
    m_released.reset();
}

} // namespace kestrel
