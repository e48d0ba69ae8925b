#pragma once

#include "panel/PlugInPanelView.h"

#include <QTimer>

#include <chrono>

namespace kestrel {

// Tells assistive technology what has changed on the panel, a few times a second at the most: what
// changed to and fro in between is not told.
class PanelAnnouncer : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds Pause { 300 };

    explicit PanelAnnouncer(PlugInPanelView& view); // which owns it

private:
    void announce();
    void announceRows();
    void announceKnobs();
    void announceSwitches();

    PlugInPanelView& m_view;
    QTimer m_pause;
    // What was told last.
    std::array<QString, 2> m_rows;
    std::array<int, PanelLayout::Knobs> m_knobPositions {};
    std::array<bool, PanelLayout::Switches> m_lit {};
};

} // namespace kestrel
