#pragma once

#include "common/ScreenChanges.h"
#include "panel/WantedPlace.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <string_view>

class QWidget;

namespace kestrel {

class DefaultsStore;

// Remembers between runs where the user left the panel and how large, and keeps it wholly in view:
// while the screens have no room for it there it is moved, and shrunk if need be.
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
    // To where the user left it, as far as the screens have room for it there.
    void bringOntoScreen();
    void followScreens(); // does so from now on whenever they change

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QRect place() const; // that the window has now
    [[nodiscard]] QRect placeInView() const; // that it shall have
    [[nodiscard]] bool hasGivenSize() const;
    void followWindowState();
    void adjust();
    void settled();
    void remember();
    void store();
    void save();

    QWidget& m_window;
    DefaultsStore& m_defaults;
    WantedPlace m_wanted;
    std::optional<ScreenChanges> m_screens;
    QTimer m_rest; // runs after a move by the user until the window has come to rest
    QTimer m_settling; // runs after a change of the screens, when the window manager moves windows
    bool m_isToBeRepeated = false; // adjusting it, if the window manager has undone that
    bool m_isOwed = false; // an adjustment that the window was maximised for
    bool m_isUnsaved = false;
};

} // namespace kestrel
