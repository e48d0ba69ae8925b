#include "app/TrayStatusItem.h"

#include "pictures/InterfaceImage.h"

#include <QIcon>
#include <QMenu>
#include <QPixmap>

namespace kestrel {

TrayStatusItem::TrayStatusItem(QMenu& menu)
    : m_menuOpener(menu)
{
    m_icon.setToolTip(QStringLiteral("ZENTA Kestrel"));
    m_icon.setContextMenu(&menu);
    // Trays open the menu on the second button. The opener does it on the first.
    QObject::connect(
        &m_icon, &QSystemTrayIcon::activated, &m_menuOpener, &TrayMenuOpener::activated);
}

void TrayStatusItem::setImage(std::string_view imageName)
{
    const auto image = InterfaceImage::named(
        QString::fromUtf8(imageName.data(), static_cast<qsizetype>(imageName.size())));
    QIcon icon(QPixmap::fromImage(image.single()));
    QPixmap doubled = QPixmap::fromImage(image.doubled());
    doubled.setDevicePixelRatio(2);
    icon.addPixmap(doubled);
    m_icon.setIcon(icon);
}

} // namespace kestrel
