#pragma once

#include <QObject>
#include <QPoint>
#include <QSize>

class QScrollBar;
class QWheelEvent;
class QWidget;

namespace kestrel {

// Lets a window be smaller than its content where a screen has too little room. Scroll bars move
// the controls of the window, and a control that gets the keyboard focus is brought into view.
class ContentScroller {
public:
    ContentScroller(QWidget& window, const QSize& content);

    // Gives the window the size of its content, limited to the room.
    void fitInto(const QSize& room);
    // The place in the content that is at the window's upper left corner.
    [[nodiscard]] QPoint offset() const { return m_offset; }
    void wheelMoved(QWheelEvent& event);

private:
    void makeBars();
    void placeBars(const QSize& view);
    void moveControls();
    void bringIntoView(const QWidget& control);

    QWidget& m_window;
    QSize m_content;
    QPoint m_offset;
    // The scroll bars are null until the room is too small for the first time. The window owns
    // them.
    QScrollBar* m_horizontal = nullptr;
    QScrollBar* m_vertical = nullptr;
    QObject m_context; // ends the connections with this object, which the window outlives
};

} // namespace kestrel
