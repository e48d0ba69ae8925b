// The part of the setup window that shows and closes it.

#include "common/ApplicationVisibility.h"
#include "common/WindowVisibility.h"
#include "setup/UserAssinableWindowController.h"

#include <QFileDialog>

namespace kestrel {

void UserAssinableWindowController::showWindow()
{
    if (!isVisible())
        m_placement->restore();
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_placement->bringIntoView();
}

void UserAssinableWindowController::makeKeyAndOrderFront()
{
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void UserAssinableWindowController::closeDialog()
{
    m_placement->save();
    MyShortcutField::makeWindowFirstResponder(*m_window);
    m_window->close();
}

void UserAssinableWindowController::windowClosing(const Notification& notification)
{
    // Another window, such as the plug-in panel, may have closed while the sheet was open and reset
    // m_visibleFileDialog.
    const bool isSheet = qobject_cast<const QFileDialog*>(notification.object) != nullptr;
    if (!m_visibleFileDialog && !isSheet) {
        if (notification.object == m_window.get())
            m_unassigned.discard();
        m_placement->save();
        const bool isPanelVisible = m_myWindowController && m_myWindowController->isVisible();
        m_services.visibility.hide();
        if (isPanelVisible)
            m_myWindowController->showWindow();
        setOriginalShortcut();
        hideUserAssignEditBox();
    }
    m_visibleFileDialog = false;
}

} // namespace kestrel
