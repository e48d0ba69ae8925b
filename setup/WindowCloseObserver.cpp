#include "setup/WindowCloseObserver.h"

#include "common/NotificationCenter.h"

#include <QApplication>
#include <QEvent>
#include <QMessageBox>

namespace kestrel {

namespace {

bool isOrdinaryWindow(const QWidget& widget)
{
    const Qt::WindowType type = widget.windowType();
    return type == Qt::Window || type == Qt::Dialog || type == Qt::Sheet || type == Qt::Tool;
}

} // namespace

WindowCloseObserver::WindowCloseObserver(NotificationCenter& notificationCenter)
    : m_notificationCenter(notificationCenter)
{
    qApp->installEventFilter(this);
}

bool WindowCloseObserver::isExcepted(const QWidget& window) const
{
    for (const QWidget* each = &window; m_excepted && each; each = each->parentWidget()) {
        if (each == m_excepted)
            return true;
    }
    return false;
}

// Qt hides a window that agrees to close before QWidget::close() returns. The queued call forgets a
// window that refuses.
bool WindowCloseObserver::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Close && event->type() != QEvent::Hide)
        return false;
    auto* window = qobject_cast<QWidget*>(watched);
    if (!window || !window->isWindow() || !isOrdinaryWindow(*window)
        || qobject_cast<QMessageBox*>(window) || isExcepted(*window))
        return false;
    if (event->type() == QEvent::Close) {
        m_closing = window;
        QMetaObject::invokeMethod(
            this, [this] { m_closing.clear(); }, Qt::QueuedConnection);
    } else if (window == m_closing) {
        m_closing.clear();
        m_notificationCenter.post(NotificationName::windowWillClose, window);
    }
    return false;
}

} // namespace kestrel
