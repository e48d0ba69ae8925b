#include "app/QtApplicationVisibility.h"

#include "platform/Workspace.h"

#include <QApplication>
#include <QDialog>
#include <QWidget>

namespace kestrel {

QtApplicationVisibility::QtApplicationVisibility(Workspace& workspace)
    : m_workspace(workspace)
{
}

void QtApplicationVisibility::hide()
{
    if (m_workspace.hideApplication())
        return;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        // Menus and Qt's own window in the tray stay.
        const bool isOrdinary = window->windowType() != Qt::Popup
            && !window->windowFlags().testFlag(Qt::BypassWindowManagerHint);
        if (!isOrdinary || !window->isVisible() || window->isMinimized())
            continue;
        // A hidden sheet would not come back with its window, and its caller would wait for ever.
        if (auto* const dialog = qobject_cast<QDialog*>(window))
            dialog->reject();
        else
            window->hide();
    }
}

bool QtApplicationVisibility::shows(const QWidget& window) const
{
    return window.isVisible() && !window.isMinimized() && !m_workspace.isApplicationHidden();
}

void QtApplicationVisibility::activate()
{
    m_workspace.activateApplication();
}

} // namespace kestrel
