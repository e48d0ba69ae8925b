#include "panel/PanelNotification.h"

namespace kestrel {

PanelNotification::PanelNotification(PlugInPanelView* view)
    : m_view(view)
{
}

QWindow* PanelNotification::window() const
{
    return m_view ? m_view->window()->windowHandle() : nullptr;
}

QAccessibleInterface* PanelNotification::parent() const
{
    return QAccessible::queryAccessibleInterface(m_view);
}

QString PanelNotification::text(QAccessible::Text kind) const
{
    return m_view && kind == QAccessible::Name ? m_view->accessibleDescription() : QString();
}

QAccessible::State PanelNotification::state() const
{
    QAccessible::State state;
    state.readOnly = true;
    state.invisible = text(QAccessible::Name).isEmpty();
    return state;
}

} // namespace kestrel
