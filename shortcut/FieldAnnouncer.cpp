#include "shortcut/FieldAnnouncer.h"

#include "common/AccessibilityListener.h"
#include "shortcut/MyShortcutField.h"
#include "shortcut/MyShortcutFieldAccessible.h"

#include <utility>

namespace kestrel {

FieldAnnouncer::FieldAnnouncer(MyShortcutField& field)
    : m_field(field)
{
    MyShortcutFieldAccessible::install();
    m_turn.setSingleShot(true);
    m_turn.setInterval(0);
    QObject::connect(&m_turn, &QTimer::timeout, [this] { announce(); });
}

void FieldAnnouncer::fieldChanged()
{
    if (!AccessibilityListener::shared().isActive()) {
        m_shortcut = m_field.shownShortcut(); // whoever listens next finds this
        m_isRefused = m_field.bNotAvailable();
    } else if (!m_turn.isActive()) {
        m_turn.start();
    }
}

void FieldAnnouncer::announce()
{
    const QString shortcut = m_field.shownShortcut();
    const QString before = std::exchange(m_shortcut, shortcut);
    if (before != shortcut) {
        QAccessibleTextUpdateEvent text(&m_field, 0, before, shortcut);
        AccessibilityListener::shared().tell(&text);
        QAccessibleValueChangeEvent value(&m_field, shortcut);
        AccessibilityListener::shared().tell(&value);
    }
    const bool isRefused = m_field.bNotAvailable();
    if (std::exchange(m_isRefused, isRefused) == isRefused)
        return;
    QAccessibleInterface* alert = QAccessible::queryAccessibleInterface(&m_field)->child(0);
    QAccessibleEvent shown(alert, isRefused ? QAccessible::ObjectShow : QAccessible::ObjectHide);
    AccessibilityListener::shared().tell(&shown);
    QAccessibleEvent description(&m_field, QAccessible::DescriptionChanged);
    AccessibilityListener::shared().tell(&description);
    if (!isRefused)
        return;
    QAccessibleEvent event(alert, QAccessible::Alert);
    AccessibilityListener::shared().tell(&event);
}

} // namespace kestrel
