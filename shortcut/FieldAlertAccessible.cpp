#include "shortcut/FieldAlertAccessible.h"

namespace kestrel {

QWindow* FieldAlertAccessible::window() const
{
    return m_field ? m_field->window()->windowHandle() : nullptr;
}

QAccessibleInterface* FieldAlertAccessible::parent() const
{
    return QAccessible::queryAccessibleInterface(m_field);
}

QString FieldAlertAccessible::text(QAccessible::Text kind) const
{
    return kind == QAccessible::Name ? MyShortcutField::NotAvailable : QString();
}

QRect FieldAlertAccessible::rect() const
{
    const QAccessibleInterface* field = parent();
    return field ? field->rect() : QRect();
}

QAccessible::State FieldAlertAccessible::state() const
{
    QAccessible::State state;
    state.readOnly = true;
    state.invisible = !m_field || !m_field->isVisible() || !m_field->isRefused();
    return state;
}

} // namespace kestrel
