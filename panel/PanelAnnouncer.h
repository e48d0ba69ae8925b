#pragma once

#include "panel/KnobRing.h"
#include "panel/PlugInPanelView.h"

#include <QAccessible>
#include <QTimer>

#include <chrono>
#include <functional>

namespace kestrel {

// Tells assistive technology what has changed on the panel, a few times a second at the most: what
// changed to and fro in between is not told.
class PanelAnnouncer : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds Pause { 300 };

    // Who is told, and whether anybody listens.
    struct Listener {
        std::function<bool()> isActive = &QAccessible::isActive;
        std::function<void(QAccessibleEvent*)> tell = &QAccessible::updateAccessibility;
    };

    explicit PanelAnnouncer(PlugInPanelView& view); // which owns it
    PanelAnnouncer(PlugInPanelView& view, Listener listener);

private:
    void announce();
    void announceRows();
    void announceKnobs();
    void announceKnob(std::size_t knob, KnobRing before, KnobRing now);
    void announceSwitches();

    PlugInPanelView& m_view;
    Listener m_listener;
    QTimer m_pause;
    // What was told last.
    std::array<QString, 2> m_rows;
    PanelKnobs m_knobs {};
    std::array<bool, PanelLayout::Switches> m_lit {};
};

} // namespace kestrel
