#include "setup/SetupWindow.h"

#include "common/AccessibilityListener.h"
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

void SetupWindow::renameEngraving(std::size_t index, const QString& text)
{
    if (index >= m_engravings.size() || m_engravings[index].text == text)
        return;
    m_engravings[index].text = text;
    if (!AccessibilityListener::shared().isActive())
        return;
    QAccessibleInterface* all = QAccessible::queryAccessibleInterface(this);
    for (int child = 0; child < all->childCount(); ++child) {
        if (all->child(child)->object() || all->child(child)->text(QAccessible::Name) != text)
            continue;
        QAccessibleEvent event(all->child(child), QAccessible::NameChanged);
        AccessibilityListener::shared().tell(&event);
    }
}

void SetupWindow::setScene(const SetupScene& scene)
{
    if (scene == m_scene)
        return;
    m_scene = scene;
    update();
}

void SetupWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawImage(painter, SetupTables::shared().BackgroundImage, -m_scroller.offset());
    painter.translate(-m_scroller.offset());
    m_scene.draw(painter);
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
