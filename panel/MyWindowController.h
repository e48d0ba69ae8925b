#pragma once

#include "common/WindowVisibility.h"
#include "link/ConsoleDisplay.h"
#include "panel/DSPWindow.h"
#include "panel/PanelPlacement.h"
#include "panel/PanelProportion.h"
#include "panel/PlugInPanelView.h"

#include <QSizeF>
#include <QTimer>

#include <memory>

namespace kestrel {

class WindowTraits;

// Owns the window of the plug-in panel for the whole run and passes the console's messages to it.
class MyWindowController : public QObject, public ConsoleDisplay, public WindowVisibility {
    Q_OBJECT

public:
    // The controller has no window and does nothing when no interface file has that name. The
    // window traits and the defaults outlive the controller.
    MyWindowController(const QString& windowNibName, WindowTraits& windowTraits,
        DefaultsStore& defaults, PlugInPanelView::ImageLoader imageNamed = &artwork::panelPicture);
    ~MyWindowController() override;

    void awakeFromNib();

    // These two always store the message, but repaint only a visible window.
    void redrawLCDdisplay(const MIDIMessage& message) override;
    void redrawDSParea(const MIDIMessage& message) override;
    void setNeedDisplay();
    void initMessage(); // empties the display; knobs and lamps stay

    // Returns the frame size that keeps the proposed width and gives the content its proportion.
    [[nodiscard]] QSizeF windowWillResize(const DSPWindow& sender, QSizeF frameSize) const;

    [[nodiscard]] bool isVisible() const override;
    // Brings the window to the front. The active window and the keyboard focus stay as they are.
    void showWindow() override;

    [[nodiscard]] DSPWindow* window() const { return m_window.get(); }
    [[nodiscard]] PlugInPanelView* plugInPanelView() const { return m_plugInPanelView; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void loadWindow();
    void applyWindowTraits();
    void orderFront();
    [[nodiscard]] QSize contentInProportion(QSize content) const;

    WindowTraits& m_windowTraits;
    PlugInPanelView::ImageLoader m_imageNamed;
    std::unique_ptr<DSPWindow> m_window;
    QWidget* m_contentView = nullptr; // the window's child
    PlugInPanelView* m_plugInPanelView = nullptr; // null before awakeFromNib(); the window's child
    QTimer m_onceShown; // 0 ms: fires once Qt has mapped the window
    std::unique_ptr<PanelProportion> m_proportion;
    std::unique_ptr<PanelPlacement> m_placement;
};

} // namespace kestrel
