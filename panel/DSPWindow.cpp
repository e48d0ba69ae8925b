#include "panel/DSPWindow.h"

#include "panel/PlugInPanelAccessible.h"

namespace kestrel {

DSPWindow::DSPWindow()
    : QWidget(nullptr, Qt::Tool | Qt::WindowStaysOnTopHint)
{
    PlugInPanelAccessible::install();
    setWindowFlag(Qt::WindowDoesNotAcceptFocus, !canBecomeKeyWindow());
    setAttribute(Qt::WA_ShowWithoutActivating, !canBecomeMainWindow());
    setAttribute(Qt::WA_DeleteOnClose, false);
    setAttribute(Qt::WA_QuitOnClose, false);
    setFocusPolicy(Qt::NoFocus);
    // Paints the area beside a panel that cannot fill its window in proportion.
    QPalette black = palette();
    black.setColor(QPalette::Window, Qt::black);
    setPalette(black);
}

} // namespace kestrel
