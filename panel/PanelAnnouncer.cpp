#include "panel/PanelAnnouncer.h"

#include "panel/PanelText.h"
#include "panel/PlugInPanelAccessible.h"

#include <utility>

namespace kestrel {

PanelAnnouncer::PanelAnnouncer(PlugInPanelView& view)
    : PanelAnnouncer(view, AccessibilityListener {})
{
}

PanelAnnouncer::PanelAnnouncer(PlugInPanelView& view, AccessibilityListener listener)
    : QObject(&view)
    , m_view(view)
    , m_listener(std::move(listener))
{
    PlugInPanelAccessible::install();
    for (std::size_t i = 0; i < m_knobNames.size(); ++i) {
        m_knobNames[i] = PanelText::knobName(view.myZonesArray(), i);
        m_knobs[i] = (*view.myKnobArray())[i];
    }
    m_rows.fill(QString());
    m_lit.fill(false);
    m_pause.setSingleShot(true);
    m_pause.setInterval(Pause);
    connect(&m_pause, &QTimer::timeout, this, &PanelAnnouncer::announce);
    m_silence.setSingleShot(true);
    m_silence.setInterval(PauseBetweenSentences);
    m_silence.setTimerType(Qt::PreciseTimer); // a coarse one may be early
    connect(&m_silence, &QTimer::timeout, this, &PanelAnnouncer::speak);
    connect(&view, &PlugInPanelView::contentChanged, this, &PanelAnnouncer::contentChanged);
    QAccessible::installActivationObserver(this);
}

PanelAnnouncer::~PanelAnnouncer()
{
    QAccessible::removeActivationObserver(this);
}

// Somebody who starts to listen reads the panel. Later sentences tell what is new since then. Qt
// for macOS may call this for each question of a listener, also while a sentence is due.
void PanelAnnouncer::accessibilityActiveChanged(bool isActive)
{
    if (!isActive || m_silence.isActive() || !m_view.myZonesArray())
        return;
    if (!m_spoken.changed(*m_view.myZonesArray()).isEmpty())
        forgetSentence(); // it tells what a listener heard earlier
}

// Remembers a change that nobody hears.
bool PanelAnnouncer::isHeard()
{
    const bool isHeard = m_listener.isActive();
    m_hasMissed |= !isHeard;
    return isHeard;
}

// Changes do not restart the timers. When a timer ends, everything changed since is told.
void PanelAnnouncer::contentChanged()
{
    if (!isHeard())
        return;
    if (!m_pause.isActive())
        m_pause.start();
    if (!m_silence.isActive())
        m_silence.start();
}

void PanelAnnouncer::speak()
{
    if (!m_listener.isActive() || !m_view.myZonesArray())
        return;
    const QString sentence = m_spoken.changed(*m_view.myZonesArray());
    if (m_spoken.isBlank())
        forgetSentence();
    if (sentence.isEmpty())
        return;
    m_view.setAccessibleDescription(sentence);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(&m_view, sentence);
    m_listener.tell(&event);
#else
    tell(QAccessible::NameChanged, PlugInPanelAccessible::Notification);
    tell(QAccessible::ObjectShow, PlugInPanelAccessible::Notification);
#endif
}

void PanelAnnouncer::forgetSentence()
{
    if (m_view.accessibleDescription().isEmpty())
        return;
    m_view.setAccessibleDescription(QString());
#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
    tell(QAccessible::NameChanged, PlugInPanelAccessible::Notification);
    tell(QAccessible::ObjectHide, PlugInPanelAccessible::Notification);
#endif
}

void PanelAnnouncer::announce()
{
    if (!isHeard())
        return;
    if (std::exchange(m_hasMissed, false))
        forgetAnnounced();
    announceRows();
    announceKnobs();
    announceSwitches();
}

void PanelAnnouncer::forgetAnnounced()
{
    m_rows = {};
    m_knobNames = {};
    m_knobs = {};
    m_lit = {};
}

void PanelAnnouncer::announceRows()
{
    const auto& zones = m_view.myZonesArray();
    if (!zones)
        return;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const QString now = PanelText::row(*zones, i);
        if (std::exchange(m_rows[i], now) != now)
            tell(QAccessible::NameChanged, static_cast<int>(i));
    }
}

void PanelAnnouncer::announceKnobs()
{
    for (std::size_t i = 0; i < m_knobs.size(); ++i) {
        const QString name = PanelText::knobName(m_view.myZonesArray(), i);
        if (std::exchange(m_knobNames[i], name) != name)
            tell(QAccessible::NameChanged, PlugInPanelAccessible::FirstKnob + static_cast<int>(i));
        const std::uint8_t now = (*m_view.myKnobArray())[i];
        announceKnob(i, std::exchange(m_knobs[i], now), KnobRing(now));
    }
}

// The description tells the mode, the lower lamp and the position; the value is the position alone.
void PanelAnnouncer::announceKnob(
    std::size_t knob, std::optional<std::uint8_t> before, KnobRing now)
{
    const int child = PlugInPanelAccessible::FirstKnob + static_cast<int>(knob);
    if (!before || KnobRing(*before).position() != now.position())
        tellValue(child, now.position());
    if (!before || PanelText::ring(KnobRing(*before)) != PanelText::ring(now))
        tell(QAccessible::DescriptionChanged, child);
}

void PanelAnnouncer::announceSwitches()
{
    for (const std::size_t lamp : PanelLayout::SwitchesFromLeft) {
        const bool now = PanelLayout::isLit((*m_view.mySwitchArray())[lamp]);
        if (std::exchange(m_lit[lamp], now) == now)
            continue;
        const int child = PlugInPanelAccessible::childOfSwitch(lamp);
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(&m_view, changed);
        event.setChild(child);
        m_listener.tell(&event);
        tellValue(child, static_cast<int>(now));
        tell(QAccessible::DescriptionChanged, child);
    }
}

void PanelAnnouncer::tell(QAccessible::Event type, int child)
{
    QAccessibleEvent event(&m_view, type);
    event.setChild(child);
    m_listener.tell(&event);
}

void PanelAnnouncer::tellValue(int child, int value)
{
    QAccessibleValueChangeEvent event(&m_view, value);
    event.setChild(child);
    m_listener.tell(&event);
}

} // namespace kestrel
