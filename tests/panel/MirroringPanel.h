#pragma once

#include "panel/PlugInPanelView.h"
#include "tests/panel/PanelMessages.h"
#include "tests/support/ManualClock.h"

namespace kestrel::test {

// A panel and the console that sends messages to it. Fixtures of the view share this part.
class MirroringPanel {
protected:
    enum class Window { Hidden, Visible };

    explicit MirroringPanel(
        Window window, const PlugInPanelView::ImageLoader& imageNamed = &artwork::panelPicture)
        : view(QRect(0, 0, 782, 220), imageNamed, clock)
        , m_isVisible(window == Window::Visible)
    {
    }

    void display(std::uint8_t zone, std::string_view characters)
    {
        view.updateZone(PanelMessages::display({ { zone, characters } }), m_isVisible);
    }
    void knob(std::uint8_t number, int value)
    {
        view.updateDSParea(
            PanelMessages::knob(number, static_cast<std::uint8_t>(value)), m_isVisible);
    }
    void lamp(std::uint8_t number, bool lit)
    {
        view.updateDSParea(PanelMessages::lamp(number, lit), m_isVisible);
    }

    ManualClock clock;
    PlugInPanelView view;

private:
    bool m_isVisible;
};

} // namespace kestrel::test
