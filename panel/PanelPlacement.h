#pragma once

#include <QObject>
#include <QTimer>

#include <string_view>

class QScreen;
class QWidget;

namespace kestrel {

class DefaultsStore;

// Remembers between runs where the user left the panel and how large.
class PanelPlacement : public QObject {
    Q_OBJECT

public:
    // Kept as text: left and top of the frame, width and height of the content.
    static constexpr std::string_view Key = "NSWindow Frame Plug-in_Panel";

    PanelPlacement(QWidget& window, DefaultsStore& defaults); // both outlive this
    ~PanelPlacement() override;

    // Leaves the window where it is when nothing fit to be used was remembered.
    void restore();
    // Has the next showing happen where the window was last, and not where a window manager
    // would put it.
    void keepPlace();
    // For when screens have gone or shrunk since.
    void bringOntoScreen();
    void followScreens(); // does so from now on whenever that happens

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow(const QScreen& screen);
    void remember();
    void save();

    QWidget& m_window;
    DefaultsStore& m_defaults;
    QTimer m_rest; // runs after a move until the window has come to rest
    bool m_isUnsaved = false;
};

} // namespace kestrel
