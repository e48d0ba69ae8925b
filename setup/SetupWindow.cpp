#include "setup/SetupWindow.h"

#include "setup/SetupTables.h"
#include "shortcut/ControlDrawing.h"

#include <QMouseEvent>
#include <QPainter>

namespace kestrel {

SetupWindow::SetupWindow()
    : QWidget(nullptr,
        Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint
            | Qt::WindowCloseButtonHint)
    , m_scroller(*this, SetupTables::shared().UserAssignableWindowFrame.size())
{
    setWindowTitle(QStringLiteral("User Assignable Setup"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFixedSize(SetupTables::shared().UserAssignableWindowFrame.size());
}

void SetupWindow::setVisible(bool visible)
{
    if (!visible && isVisible() && m_hiding)
        m_hiding();
    QWidget::setVisible(visible);
}

void SetupWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawImage(painter, SetupTables::shared().BackgroundImage, -m_scroller.offset());
}

void SetupWindow::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_mouseDown)
        m_mouseDown();
}

void SetupWindow::wheelEvent(QWheelEvent* event)
{
    m_scroller.wheelMoved(*event);
}

} // namespace kestrel
