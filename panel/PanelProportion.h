#pragma once

#include "panel/ResizeCorrection.h"

#include <QObject>
#include <QTimer>

#include <functional>

class QWidget;

namespace kestrel {

// Keeps the view of a window in proportion, whatever becomes of the window: the window itself is
// corrected as far as the window manager lets it, and into a window of another shape (maximised,
// tiled) the view is fitted, with black beside it.
class PanelProportion : public QObject {
    Q_OBJECT

public:
    // The content size to ask for in place of the one at hand.
    using Better = std::function<QSize(QSize content)>;

    PanelProportion(QWidget& window, QWidget& view, Better better); // both outlive this

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool mayResize() const;
    void correct();

    QWidget& m_window;
    QWidget& m_view;
    Better m_better;
    ResizeCorrection m_correction;
    QTimer m_atOnce; // for the last of the sizes that came together
    QTimer m_settle;
};

} // namespace kestrel
