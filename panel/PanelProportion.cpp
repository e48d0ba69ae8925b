#include "panel/PanelProportion.h"

#include <QEvent>
#include <QWidget>

#include <chrono>
#include <utility>

namespace kestrel {

namespace {
constexpr std::chrono::milliseconds SettleTime { 250 };
// In these a window has the size that its screen gives it.
constexpr Qt::WindowStates GivenSize
    = Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized;
} // namespace

PanelProportion::PanelProportion(QWidget& window, QWidget& view, Better better)
    : m_window(window)
    , m_view(view)
    , m_better(std::move(better))
{
    m_atOnce.setSingleShot(true);
    m_settle.setSingleShot(true);
    connect(&m_atOnce, &QTimer::timeout, this, [this] {
        if (mayResize() && m_correction.wantedAfterResize(m_window.size()))
            correct();
    });
    connect(&m_settle, &QTimer::timeout, this, [this] {
        if (mayResize() && m_correction.wantedAfterSettling(m_window.size()))
            correct();
    });
    m_window.installEventFilter(this);
    m_view.setGeometry(fittedPanel(m_window.size()));
}

bool PanelProportion::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::WindowStateChange) {
        m_view.setGeometry(fittedPanel(m_window.size()));
        m_atOnce.start(0);
        m_settle.start(SettleTime);
    }
    return QObject::eventFilter(watched, event);
}

bool PanelProportion::mayResize() const
{
    return m_window.isVisible() && !(m_window.windowState() & GivenSize);
}

void PanelProportion::correct()
{
    m_window.resize(m_better(m_window.size()));
}

} // namespace kestrel
