#pragma once

#include "setup/ContentScroller.h"
#include "setup/Engraving.h"
#include "setup/SetupScene.h"

#include <QWidget>

#include <functional>
#include <vector>

namespace kestrel {

// The "User Assignable Setup" window without its controls: the frame and the background.
class SetupWindow : public QWidget {
public:
    SetupWindow();

    // Sets the function that is called when the user clicks the background.
    void setMouseDown(std::function<void()> mouseDown) { m_mouseDown = std::move(mouseDown); }
    // Sets the function that is called just before the window is hidden or closed.
    void setHiding(std::function<void()> hiding) { m_hiding = std::move(hiding); }

    // Limits the window to the room. The user can scroll to the rest of the content. `offset()` is
    // the place in the content that is at the upper left corner.
    void fitInto(const QSize& room) { m_scroller.fitInto(room); }

    [[nodiscard]] QPoint offset() const { return m_scroller.offset(); }

    // The texts of the background, for assistive technology.
    void setEngravings(std::vector<Engraving> engravings) { m_engravings = std::move(engravings); }
    [[nodiscard]] const std::vector<Engraving>& engravings() const { return m_engravings; }
    // Does nothing before the window has that engraving.
    void renameEngraving(std::size_t index, const QString& text);

    void setScene(const SetupScene& scene);
    [[nodiscard]] const SetupScene& scene() const { return m_scene; }

    void setVisible(bool visible) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    ContentScroller m_scroller;
    std::vector<Engraving> m_engravings;
    SetupScene m_scene;
    std::function<void()> m_mouseDown;
    std::function<void()> m_hiding;
};

} // namespace kestrel
