#include "app/TrayMenuOpener.h"

#include <QCursor>
#include <QMenu>

namespace kestrel {

TrayMenuOpener::TrayMenuOpener(QMenu& menu)
    : m_menu(menu)
{
    m_afterwards.setSingleShot(true);
    connect(&m_menu, &QMenu::aboutToShow, this, [this] { m_openedByTray = true; });
    connect(&m_afterwards, &QTimer::timeout, this, &TrayMenuOpener::openUnlessOpened);
}

void TrayMenuOpener::activated(QSystemTrayIcon::ActivationReason reason)
{
    if (reason != QSystemTrayIcon::Trigger)
        return;
    m_openedByTray = m_menu.isVisible();
    m_afterwards.start(0);
}

void TrayMenuOpener::openUnlessOpened()
{
    if (!m_openedByTray)
        m_menu.popup(QCursor::pos());
}

} // namespace kestrel
