// The part of the setup window that shows and closes it.

#include "common/ApplicationVisibility.h"
#include "common/ScreenFit.h"
#include "common/WindowVisibility.h"
#include "setup/SetupTables.h"
#include "setup/UserAssinableWindowController.h"

#include <QFileDialog>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

#include <chrono>

namespace kestrel {

namespace {
// A window manager has placed and framed a window after this time.
constexpr std::chrono::milliseconds SettleTime { 500 };
} // namespace

void UserAssinableWindowController::showWindow()
{
    if (!isVisible())
        placeWindow();
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    bringIntoView();
}

// Puts the window at its last place, no larger than its present screen.
void UserAssinableWindowController::placeWindow()
{
    m_savedFrame.restore(
        *m_window, SetupTables::shared().UserAssignableWindowFrame, availableScreenAreas());
    fitIntoScreen();
}

// Gives the window its full size again where the screen has room for it. Does so once more when the
// window manager has given the window its frame or has moved it for itself.
void UserAssinableWindowController::bringIntoView()
{
    const auto bring = [this] {
        moveOntoScreens();
        fitIntoScreen();
        moveOntoScreens();
    };
    bring();
    QTimer::singleShot(SettleTime, m_window.get(), [this, bring] {
        if (isVisible())
            bring();
    });
}

void UserAssinableWindowController::moveOntoScreens()
{
    const QPoint place
        = movedOntoScreens(m_window->frameGeometry(), availableScreenAreas()).topLeft();
    if (place != m_window->pos())
        m_window->move(place);
}

void UserAssinableWindowController::fitIntoScreen()
{
    const QScreen* screen = QGuiApplication::screenAt(m_window->geometry().center());
    if (!screen)
        screen = m_window->screen();
    m_window->fitInto(SavedWindowFrame::contentRoom(*m_window, screen->availableGeometry().size()));
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
        if (notification.object == m_window.get())
            m_unassigned.discard();
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
