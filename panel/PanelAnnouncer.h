#pragma once

#include "common/AccessibilityListener.h"
#include "panel/KnobRing.h"
#include "panel/PlugInPanelView.h"

#include <QTimer>

#include <chrono>

namespace kestrel {

// Tells assistive technology what has changed on the panel, at most a few times a second. A value
// that changes and changes back between two announcements is not announced.
class PanelAnnouncer : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds Pause { 300 };

    explicit PanelAnnouncer(PlugInPanelView& view); // the view owns the announcer
    PanelAnnouncer(PlugInPanelView& view, AccessibilityListener listener);

private:
    void announce();
    void announceRows();
    void announceKnobs();
    void announceKnob(std::size_t knob, KnobRing before, KnobRing now);
    void announceSwitches();
    void tell(QAccessible::Event type, int child);
    void tellValue(int child, int value);

    PlugInPanelView& m_view;
    AccessibilityListener m_listener;
    QTimer m_pause;
    // The values that were announced last.
    std::array<QString, 2> m_rows;
    std::array<QString, PanelLayout::Knobs> m_knobNames;
    PanelKnobs m_knobs {};
    std::array<bool, PanelLayout::Switches> m_lit {};
};

} // namespace kestrel
