// The part of the application delegate that answers the menu.

#include "app/AppDelegate.h"
#include "app/BundleInfo.h"
#include "app/KeySheetSaver.h"
#include "app/QtApplicationVisibility.h"
#include "monitor/ActivityWindow.h"
#include "panel/DSPWindow.h"
#include "panel/MyWindowController.h"
#include "platform/Platform.h"
#include "setup/SetupWindow.h"
#include "setup/UserAssinableWindowController.h"
#include "setup/WindowCloseObserver.h"

#include <QApplication>
#include <QMessageBox>

namespace kestrel {

namespace {
constexpr std::string_view ConsolePreferences = "/Library/PreferencePanes/HolvikZentaMIDI.prefPane";
} // namespace

void AppDelegate::newDocument()
{
    if (!m_connection.isProTools())
        m_myWindowController->initMessage();
    DSPWindow* const panel = m_myWindowController->window();
    const bool wasVisible = m_myWindowController->isVisible(); // never hidden with the application
    m_myWindowController->showWindow();
    if (!wasVisible) {
        m_myWindowController->setNeedDisplay();
        return;
    }
    m_visibility->activate();
    panel->raise(); // it never becomes the key window
}

void AppDelegate::kestrel()
{
    // If the driver is not installed, there is nothing to open and no error to report.
    static_cast<void>(m_platform.workspace->openFile(ConsolePreferences));
}

void AppDelegate::userAssign()
{
    const bool wasVisible = m_visibility->shows(*m_userAssignableWindowController->window());
    m_userAssignableWindowController->showWindow();
    m_visibility->activate();
    m_userAssignableWindowController->makeKeyAndOrderFront();
    if (!wasVisible)
        m_userAssignableWindowController->setupUI(*m_assignments.myUserAssignFile());
}

void AppDelegate::saveKeySheet()
{
    m_keySheetSaver->choose();
}

void AppDelegate::showActivity()
{
    if (!m_activityWindow) {
        m_activityWindow = std::make_unique<ActivityWindow>(
            ActivityWindow::Subject {
                m_activity.log(), m_activity.health(), m_clock, *m_platform.documentFiles },
            [this] { m_keyPermission.offer(); });
        m_windowCloseObserver->except(*m_activityWindow);
        m_activityWindow->setClosed([this] { giveFrontBack(); });
    }
    m_activityWindow->setWindowState(m_activityWindow->windowState() & ~Qt::WindowMinimized);
    m_activityWindow->show();
    m_visibility->activate();
    m_activityWindow->raise();
    m_activityWindow->activateWindow();
}

// When the last window that a user works in has closed, the application that was in front before
// gets the keyboard. macOS does not do that by itself. The panel never has the keyboard, so it does
// not count, and stays.
void AppDelegate::giveFrontBack()
{
    const bool isInUse = m_visibility->shows(*m_userAssignableWindowController->window())
        || (m_activityWindow && m_visibility->shows(*m_activityWindow)) || m_keySheetSaver->isOpen()
        || QApplication::activeModalWidget();
    if (isInUse || m_terminated)
        return;
    const bool panelWasVisible = m_myWindowController->isVisible();
    m_visibility->hide();
    if (panelWasVisible)
        m_myWindowController->showWindow();
}

void AppDelegate::about()
{
    // Some trays allow their menu while a modal window is open. A sheet is modal only to its own
    // window, so it does not count.
    QWidget* const open = QApplication::activeModalWidget();
    if (open && open->windowModality() != Qt::WindowModal) {
        open->activateWindow();
        return;
    }
    QMessageBox alert(QMessageBox::Warning, QStringLiteral("ZENTA Kestrel"),
        QStringLiteral("ZENTA Kestrel"), QMessageBox::Ok);
    alert.setInformativeText(aboutInstalled());
    m_visibility->activate(); // else the alert would open behind other windows
    alert.exec();

    const bool panelWasVisible = m_myWindowController->isVisible();
    if (!panelWasVisible && m_visibility->shows(*m_userAssignableWindowController->window()))
        return;
    m_visibility->hide();
    if (panelWasVisible)
        m_myWindowController->showWindow();
}

void AppDelegate::quit()
{
    terminate();
}

} // namespace kestrel
