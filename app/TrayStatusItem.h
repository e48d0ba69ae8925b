#pragma once

#include "app/TrayMenuOpener.h"
#include "link/StatusItem.h"

#include <QSystemTrayIcon>

class QMenu;

namespace kestrel {

// The status item in the desktop's tray or the menu bar. It appears as soon as there is a tray.
class TrayStatusItem final : public StatusItem {
public:
    // `menu` outlives the item.
    explicit TrayStatusItem(QMenu& menu);

    void setImage(std::string_view imageName) override;
    void show() { m_icon.show(); }

private:
    TrayMenuOpener m_menuOpener;
    QSystemTrayIcon m_icon;
};

} // namespace kestrel
