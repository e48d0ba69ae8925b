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

// Owns the plug-in panel's window for the whole run and passes it what the console sends.
class MyWindowController : public QObject, public ConsoleDisplay, public WindowVisibility {
    Q_OBJECT

public:
    // Without a window, and doing nothing, when there is no interface file of that name. The
    // platform's part and the defaults outlive the controller.
    MyWindowController(const QString& windowNibName, WindowTraits& windowTraits,
        DefaultsStore& defaults, PlugInPanelView::ImageLoader imageNamed = &InterfaceImage::named);
    ~MyWindowController() override;

    void awakeFromNib();

    // These store what arrived in any case and repaint only a visible window.
    void redrawLCDdisplay(const MIDIMessage& message) override;
    void redrawDSParea(const MIDIMessage& message) override;
    void setNeedDisplay();
    void initMessage(); // empties the display; knobs and lamps stay

    // The frame size to take in place of the proposed one, so that the content is in proportion.
    [[nodiscard]] QSizeF windowWillResize(const DSPWindow& sender, QSizeF frameSize) const;

    [[nodiscard]] bool isVisible() const override;
    // In front of others, leaving the active window and the focus as they are.
    void showWindow() override;

    [[nodiscard]] DSPWindow* window() const { return m_window.get(); }
    [[nodiscard]] PlugInPanelView* plugInPanelView() const { return m_plugInPanelView; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void loadWindow();
    void applyWindowTraits();
    [[nodiscard]] QSize contentInProportion(QSize content) const;

    WindowTraits& m_windowTraits;
    PlugInPanelView::ImageLoader m_imageNamed;
    std::unique_ptr<DSPWindow> m_window;
    QWidget* m_contentView = nullptr; // the window's child
    PlugInPanelView* m_plugInPanelView = nullptr; // the window's child, once awake
    QTimer m_onceShown; // runs out when Qt has mapped the window
    std::unique_ptr<PanelProportion> m_proportion;
    std::unique_ptr<PanelPlacement> m_placement;
};

} // namespace kestrel
