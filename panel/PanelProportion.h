#pragma once

#include <QObject>
#include <QSize>
#include <QTimer>

#include <functional>

class QWidget;

namespace kestrel {

// Keeps the view of a window in proportion. It corrects the size of the window if the window
// manager allows it. In a window of another shape (maximised, tiled) it fits the view in, with
// black beside it.
class PanelProportion : public QObject {
    Q_OBJECT

public:
    // Returns the content size to request in place of `content`.
    using Better = std::function<QSize(QSize content)>;

    // True when the window system has fixed the size without telling Qt, as when a window is
    // maximised in one direction only.
    using IsSizeGiven = std::function<bool()>;

    // The window and its view outlive this object.
    PanelProportion(QWidget& window, QWidget& view, Better better, IsSizeGiven isSizeGiven);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] bool mayResize() const;
    void settled();

    QWidget& m_window;
    QWidget& m_view;
    Better m_better;
    IsSizeGiven m_isSizeGiven;
    QTimer m_settle; // runs until a new size has stayed for 250 ms
    QSize m_refused; // the size of the window at the last request for a better one
    int m_timesAsked = 0; // the number of requests at that size
};

} // namespace kestrel
