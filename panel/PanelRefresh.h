#pragma once

#include "panel/RepaintGate.h"

#include <QRegion>
#include <QTimer>

class QWidget;

namespace kestrel {

// Collects the stale parts of a view and repaints them at most once per display refresh.
class PanelRefresh {
public:
    explicit PanelRefresh(QWidget& view); // the view outlives this

    void request(const QRegion& stale);
    void painted(); // the view calls this after each painting

private:
    void repaint();

    QWidget& m_view;
    RepaintGate m_gate;
    QTimer m_wait; // runs while stale parts wait for the gate
    QRegion m_stale;
};

} // namespace kestrel
