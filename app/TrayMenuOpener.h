#pragma once

#include <QObject>
#include <QSystemTrayIcon>
#include <QTimer>

class QMenu;

namespace kestrel {

// Opens the status item's menu for the first mouse button, where the tray does not. Trays that do
// say both that the item was used and that the menu opens, in this order.
class TrayMenuOpener final : public QObject {
public:
    // `menu` outlives the opener.
    explicit TrayMenuOpener(QMenu& menu);

    void activated(QSystemTrayIcon::ActivationReason reason);

private:
    void openUnlessOpened();

    QMenu& m_menu;
    QTimer m_afterwards; // once what the tray has to say has been said
    bool m_openedByTray = false;
};

} // namespace kestrel
