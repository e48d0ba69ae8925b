// The part of the setup window that shows and closes it.

#include "common/ApplicationVisibility.h"
#include "common/ScreenFit.h"
#include "common/WindowVisibility.h"
#include "setup/SetupTables.h"
#include "setup/UserAssinableWindowController.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QScreen>

namespace kestrel {

void UserAssinableWindowController::showWindow()
{
    if (!isVisible())
        placeWindow();
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
}

// Puts the window at its last place, no larger than its present screen.
void UserAssinableWindowController::placeWindow()
{
    m_savedFrame.restore(
        *m_window, SetupTables::shared().UserAssignableWindowFrame, availableScreenAreas());
    const QScreen* screen = QGuiApplication::screenAt(m_window->geometry().center());
    if (!screen)
        screen = m_window->screen();
    m_window->fitInto(SavedWindowFrame::contentRoom(screen->availableGeometry().size()));
}

void UserAssinableWindowController::makeKeyAndOrderFront()
{
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void UserAssinableWindowController::closeDialog()
{
    m_savedFrame.save(*m_window);
    MyShortcutField::makeWindowFirstResponder(*m_window);
    m_window->close();
}

void UserAssinableWindowController::windowClosing(const Notification& notification)
{
    // Another window, such as the plug-in panel, may have closed while the sheet was open and reset
    // m_visibleFileDialog.
    const bool isSheet = qobject_cast<const QFileDialog*>(notification.object) != nullptr;
    if (!m_visibleFileDialog && !isSheet) {
        m_savedFrame.save(*m_window);
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
