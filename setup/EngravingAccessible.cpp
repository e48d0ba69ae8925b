#include "setup/EngravingAccessible.h"

namespace kestrel {

EngravingAccessible::EngravingAccessible(SetupWindow* window, std::size_t index)
    : m_window(window)
    , m_index(index)
{
}

QWindow* EngravingAccessible::window() const
{
    return m_window ? m_window->windowHandle() : nullptr;
}

QAccessibleInterface* EngravingAccessible::parent() const
{
    return QAccessible::queryAccessibleInterface(m_window);
}

QString EngravingAccessible::text(QAccessible::Text kind) const
{
    return m_window && kind == QAccessible::Name ? m_window->engravings()[m_index].text : QString();
}

QRect EngravingAccessible::rect() const
{
    if (!m_window)
        return {};
    const QRect frame = m_window->engravings()[m_index].frame.translated(-m_window->offset());
    return { m_window->mapToGlobal(frame.topLeft()), frame.size() };
}

QAccessible::Role EngravingAccessible::role() const
{
    return m_window ? m_window->engravings()[m_index].role : QAccessible::NoRole;
}

QAccessible::State EngravingAccessible::state() const
{
    QAccessible::State state;
    state.readOnly = true;
    state.invisible = !m_window || !m_window->isVisible();
    return state;
}

} // namespace kestrel
