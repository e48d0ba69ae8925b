#pragma once

#include <QObject>
#include <QSize>
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
    void settled();

    QWidget& m_window;
    QWidget& m_view;
    Better m_better;
    QTimer m_settle; // runs until a new size has stayed for a while
    QSize m_refused; // the size that the window had when a better one was asked for last
    int m_timesAsked = 0; // for a better size than that
};

} // namespace kestrel
