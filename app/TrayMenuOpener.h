#pragma once

#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>

class QMenu;

namespace kestrel {

// Opens the status item's menu on the first mouse button if the tray does not. A tray that opens
// the menu itself first sends activated(), then shows the menu.
class TrayMenuOpener final : public QObject {
public:
    // `menu` outlives the opener.
    explicit TrayMenuOpener(QMenu& menu);

    void activated(QSystemTrayIcon::ActivationReason reason);

private:
    void openUnlessOpened();

    QMenu& m_menu;
    QTimer m_afterwards; // runs after all that the tray sends for one click
    bool m_openedByTray = false;
};

} // namespace kestrel
