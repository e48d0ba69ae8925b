#pragma once

#include "setup/ContentScroller.h"

#include <QWidget>

#include <functional>

namespace kestrel {

// The bare "User Assignable Setup" window: its frame, and the background on which the controls
// stand.
class SetupWindow : public QWidget {
public:
    SetupWindow();

    // A click on the background.
    void setMouseDown(std::function<void()> mouseDown) { m_mouseDown = std::move(mouseDown); }
    // About to be hidden or closed.
    void setHiding(std::function<void()> hiding) { m_hiding = std::move(hiding); }

    // Never larger than the room. What is not seen then can be scrolled to.
    void fitInto(const QSize& room) { m_scroller.fitInto(room); }

    void setVisible(bool visible) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    ContentScroller m_scroller;
    std::function<void()> m_mouseDown;
    std::function<void()> m_hiding;
};

} // namespace kestrel
