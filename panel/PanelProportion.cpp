#include "panel/PanelProportion.h"

#include "panel/PanelShape.h"

#include <QEvent>
#include <QWidget>

#include <chrono>
#include <utility>

namespace kestrel {

namespace {
// The window system sends a new size and a new state (maximised or not) in two messages, in either
// order. Both have arrived after this time.
constexpr std::chrono::milliseconds SettleTime { 250 };
constexpr int MostTimesAsked = 2; // a request during a drag may be overridden, so ask once more
// The states in which the window manager, not the program, sets the size.
constexpr Qt::WindowStates GivenSize
    = Qt::WindowMaximized | Qt::WindowFullScreen | Qt::WindowMinimized;
} // namespace

PanelProportion::PanelProportion(
    QWidget& window, QWidget& view, Better better, IsSizeGiven isSizeGiven)
    : m_window(window)
    , m_view(view)
    , m_better(std::move(better))
    , m_isSizeGiven(std::move(isSizeGiven))
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(SettleTime);
    connect(&m_settle, &QTimer::timeout, this, &PanelProportion::settled);
    m_window.installEventFilter(this);
    m_view.setGeometry(fittedPanel(m_window.size()));
}

bool PanelProportion::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize) {
        m_view.setGeometry(fittedPanel(m_window.size()));
        m_settle.start();
    } else if (event->type() == QEvent::WindowStateChange) {
        m_settle.stop(); // the window manager gives the size that belongs to the new state
    }
    return QObject::eventFilter(watched, event);
}

bool PanelProportion::mayResize() const
{
    return m_window.isVisible() && !(m_window.windowState() & GivenSize);
}

// A window manager that sets the same size again insists on it. The requests stop then.
void PanelProportion::settled()
{
    if (!mayResize())
        return;
    const QSize content = m_window.size();
    if (content != m_refused || isInProportion(content)) {
        m_refused = content;
        m_timesAsked = 0;
    }
    if (isInProportion(content) || m_timesAsked == MostTimesAsked || m_isSizeGiven())
        return;
    ++m_timesAsked;
    m_window.resize(m_better(content));
}

} // namespace kestrel
