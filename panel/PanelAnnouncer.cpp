#include "panel/PanelAnnouncer.h"

#include "panel/PanelText.h"
#include "panel/PlugInPanelAccessible.h"

#include <utility>

namespace kestrel {

PanelAnnouncer::PanelAnnouncer(PlugInPanelView& view)
    : PanelAnnouncer(view, Listener {})
{
}

PanelAnnouncer::PanelAnnouncer(PlugInPanelView& view, Listener listener)
    : QObject(&view)
    , m_view(view)
    , m_listener(std::move(listener))
{
    PlugInPanelAccessible::install();
    m_pause.setSingleShot(true);
    m_pause.setInterval(Pause);
    connect(&m_pause, &QTimer::timeout, this, &PanelAnnouncer::announce);
    connect(&view, &PlugInPanelView::contentChanged, this, [this] {
        if (m_listener.isActive() && !m_pause.isActive())
            m_pause.start();
    });
}

void PanelAnnouncer::announce()
{
    announceRows();
    announceKnobs();
    announceSwitches();
}

void PanelAnnouncer::announceRows()
{
    if (!m_view.myZonesArray())
        return;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const QString now = PanelText::row(*m_view.myZonesArray(), i);
        if (std::exchange(m_rows[i], now) == now)
            continue;
        QAccessibleEvent event(&m_view, QAccessible::NameChanged);
        event.setChild(static_cast<int>(i));
        m_listener.tell(&event);
    }
}

void PanelAnnouncer::announceKnobs()
{
    for (std::size_t i = 0; i < m_knobs.size(); ++i) {
        const std::uint8_t now = (*m_view.myKnobArray())[i];
        announceKnob(i, KnobRing(std::exchange(m_knobs[i], now)), KnobRing(now));
    }
}

// The description tells the mode, the lower lamp and the position; the value is the position alone.
void PanelAnnouncer::announceKnob(std::size_t knob, KnobRing before, KnobRing now)
{
    const int child = PlugInPanelAccessible::FirstKnob + static_cast<int>(knob);
    if (before.position() != now.position()) {
        QAccessibleValueChangeEvent event(&m_view, now.position());
        event.setChild(child);
        m_listener.tell(&event);
    }
    if (PanelText::ring(before) != PanelText::ring(now)) {
        QAccessibleEvent event(&m_view, QAccessible::DescriptionChanged);
        event.setChild(child);
        m_listener.tell(&event);
    }
}

void PanelAnnouncer::announceSwitches()
{
    for (std::size_t i = 0; i < m_lit.size(); ++i) {
        const bool now = PanelLayout::isLit((*m_view.mySwitchArray())[i]);
        if (std::exchange(m_lit[i], now) == now)
            continue;
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(&m_view, changed);
        event.setChild(PlugInPanelAccessible::FirstSwitch + static_cast<int>(i));
        m_listener.tell(&event);
    }
}

} // namespace kestrel
