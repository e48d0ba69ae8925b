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

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    std::function<void()> m_mouseDown;
};

} // namespace kestrel
