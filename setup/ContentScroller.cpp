#include "setup/ContentScroller.h"

#include <QApplication>
#include <QScrollBar>
#include <QWheelEvent>

namespace kestrel {

namespace {

constexpr int Margin = 8; // free space beside a control that is brought into view
constexpr int WheelStep = 20;

void show(QScrollBar& bar, int first, int length)
{
    if (first < bar.value())
        bar.setValue(first);
    else if (first + length > bar.value() + bar.pageStep())
        bar.setValue(first + length - bar.pageStep());
}

} // namespace

ContentScroller::ContentScroller(QWidget& window, const QSize& content)
    : m_window(window)
    , m_content(content)
{
    QObject::connect(qApp, &QApplication::focusChanged, &m_context, [this](QWidget*, QWidget* now) {
        if (now && m_window.isAncestorOf(now))
            bringIntoView(*now);
    });
}

void ContentScroller::fitInto(const QSize& room)
{
    const bool fits = m_content.width() <= room.width() && m_content.height() <= room.height();
    if (!fits && !m_vertical)
        makeBars();
    if (!m_vertical) {
        m_window.setFixedSize(m_content);
        return;
    }
    // Each bar takes room from the other direction.
    const int extent = m_vertical->sizeHint().width();
    bool isTooHigh = m_content.height() > room.height();
    const bool isTooWide = m_content.width() + (isTooHigh ? extent : 0) > room.width();
    isTooHigh = m_content.height() + (isTooWide ? extent : 0) > room.height();
    const QSize bars(isTooHigh ? extent : 0, isTooWide ? extent : 0);
    m_window.setFixedSize((m_content + bars).boundedTo(room));
    placeBars(m_window.size() - bars);
}

void ContentScroller::makeBars()
{
    m_horizontal = new QScrollBar(Qt::Horizontal, &m_window);
    m_vertical = new QScrollBar(Qt::Vertical, &m_window);
    for (QScrollBar* bar : { m_horizontal, m_vertical }) {
        bar->setSingleStep(WheelStep);
        QObject::connect(bar, &QScrollBar::valueChanged, &m_context, [this] { moveControls(); });
    }
}

// `view` is the part of the window that the bars leave to the content.
void ContentScroller::placeBars(const QSize& view)
{
    const QSize hidden = m_content - view;
    m_horizontal->setGeometry(0, view.height(), view.width(), m_horizontal->sizeHint().height());
    m_horizontal->setPageStep(view.width());
    m_horizontal->setRange(0, hidden.width());
    m_horizontal->setVisible(hidden.width() > 0);
    m_vertical->setGeometry(view.width(), 0, m_vertical->sizeHint().width(), view.height());
    m_vertical->setPageStep(view.height());
    m_vertical->setRange(0, hidden.height());
    m_vertical->setVisible(hidden.height() > 0);
    m_horizontal->raise();
    m_vertical->raise();
}

void ContentScroller::moveControls()
{
    const QPoint target(m_horizontal->value(), m_vertical->value());
    const QPoint step = m_offset - target;
    m_offset = target;
    for (QObject* child : m_window.children()) {
        auto* control = qobject_cast<QWidget*>(child);
        if (control && !control->isWindow() && control != m_horizontal && control != m_vertical)
            control->move(control->pos() + step);
    }
    m_window.update();
}

void ContentScroller::bringIntoView(const QWidget& control)
{
    if (!m_vertical)
        return;
    const QPoint place = control.mapTo(&m_window, QPoint(0, 0)) + m_offset;
    show(*m_horizontal, place.x() - Margin, control.width() + 2 * Margin);
    show(*m_vertical, place.y() - Margin, control.height() + 2 * Margin);
}

void ContentScroller::wheelMoved(QWheelEvent& event)
{
    const bool isSideways = std::abs(event.angleDelta().x()) > std::abs(event.angleDelta().y());
    if (QScrollBar* bar = isSideways ? m_horizontal : m_vertical)
        QCoreApplication::sendEvent(bar, &event);
}

} // namespace kestrel
