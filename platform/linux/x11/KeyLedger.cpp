#include "platform/linux/x11/KeyLedger.h"

namespace kestrel {

namespace {
using Direction = KeyEvents::Direction;

// The X server's clock ticks in milliseconds. A full tick between the release and the press keeps
// clients from taking the press for a repeat of the previous one.
constexpr std::uint32_t FreshPressDelayMs = 2;

template <typename Visit> void forEachKey(const XKeySet& keys, Visit visit)
{
    for (std::size_t key = 0; keys.any() && key < keys.size(); ++key) {
        if (keys.test(key))
            visit(static_cast<XKeyCode>(key));
    }
}
} // namespace

const KeyPlan& KeyLedger::press(
    XKeyCode key, std::span<const XKeyCode> modifiers, KeyEvents::AutoRepeat autoRepeat)
{
    m_plan.clear();
    XKeySet named;
    for (const XKeyCode modifier : modifiers)
        named.set(modifier);

    const XKeySet taken = m_userModifiers & ~named;
    takeAwayUnnamed(named);
    for (const XKeyCode modifier : modifiers) {
        if (modifier == key)
            continue;
        if (!m_held.test(modifier) && m_foreignModifiers.test(modifier))
            continue;
        if (!m_held.test(modifier))
            down(modifier);
        m_substitutes.reset(modifier);
        m_modifiers.set(modifier);
    }

    const bool fresh = mayBeDown(key) && autoRepeat == KeyEvents::AutoRepeat::No;
    takeFromHolders(key);
    down(key, fresh ? FreshPressDelayMs : 0);
    giveBack(taken & ~XKeySet().set(key));
    return m_plan;
}

const KeyPlan& KeyLedger::pressBare(XKeyCode key)
{
    m_plan.clear();
    takeFromHolders(key);
    down(key);
    return m_plan;
}

const KeyPlan& KeyLedger::release(XKeyCode key)
{
    m_plan.clear();
    m_modifiers.reset(key);
    if (m_held.test(key) && m_userModifiers.test(key))
        m_substitutes.set(key);
    else if (m_held.test(key))
        up(key);
    return m_plan;
}

const KeyPlan& KeyLedger::releaseAll()
{
    m_plan.clear();
    m_substitutes |= m_held & m_userModifiers;
    const XKeySet modifiers = m_modifiers;
    forEachKey(m_held & ~m_substitutes & ~modifiers, [this](XKeyCode key) { up(key); });
    forEachKey(m_held & ~m_substitutes, [this](XKeyCode key) { up(key); });
    m_modifiers.reset();
    return m_plan;
}

const KeyPlan& KeyLedger::setUserModifiers(const XKeySet& keys)
{
    m_plan.clear();
    m_userModifiers = keys;
    forEachKey(m_substitutes & ~keys, [this](XKeyCode key) { up(key); });
    return m_plan;
}

void KeyLedger::forget()
{
    m_held.reset();
    m_substitutes.reset();
    m_modifiers.reset();
}

void KeyLedger::takeAwayUnnamed(const XKeySet& named)
{
    forEachKey((m_modifiers | m_userModifiers) & ~named, [this](XKeyCode key) { up(key); });
}

bool KeyLedger::mayBeDown(XKeyCode key) const
{
    return m_held.test(key) || m_foreignKeys.test(key) || m_foreignModifiers.test(key);
}

void KeyLedger::takeFromHolders(XKeyCode key)
{
    if (mayBeDown(key))
        up(key);
}

void KeyLedger::giveBack(const XKeySet& taken)
{
    forEachKey(taken, [this](XKeyCode key) {
        down(key);
        m_substitutes.set(key);
    });
}

void KeyLedger::down(XKeyCode key, std::uint32_t delayMs)
{
    m_plan.push_back({ key, Direction::Down, delayMs });
    m_held.set(key);
}

void KeyLedger::up(XKeyCode key)
{
    m_plan.push_back({ key, Direction::Up, 0 });
    m_held.reset(key);
    m_substitutes.reset(key);
    m_modifiers.reset(key);
}

} // namespace kestrel
