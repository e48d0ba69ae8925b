#include "panel/PanelRefresh.h"

#include <QWidget>

#include <utility>

namespace kestrel {

PanelRefresh::PanelRefresh(QWidget& view)
    : m_view(view)
{
    m_wait.setSingleShot(true);
    m_wait.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_wait, &QTimer::timeout, &m_view, [this] { repaint(); });
}

void PanelRefresh::request(const QRegion& stale)
{
    m_stale += stale;
    if (m_wait.isActive())
        return;
    const auto delay = m_gate.delay(std::chrono::steady_clock::now());
    if (delay == RepaintGate::Delay::zero())
        repaint();
    else
        m_wait.start(delay);
}

void PanelRefresh::painted()
{
    m_gate.painted(std::chrono::steady_clock::now());
}

void PanelRefresh::repaint()
{
    m_view.update(std::exchange(m_stale, {}));
}

} // namespace kestrel
