#pragma once

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

    void setVisible(bool visible) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    std::function<void()> m_mouseDown;
    std::function<void()> m_hiding;
};

} // namespace kestrel
