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

// Remembers the place and size that the user gave the panel, also between runs, and keeps the whole
// panel in view: it moves the panel, and shrinks it if necessary, while the screens have no room at
// that place.
class PanelPlacement : public QObject {
    Q_OBJECT

public:
    // The value is text: left and top of the frame, width and height of the content.
    static constexpr std::string_view Key = "NSWindow Frame Plug-in_Panel";

    PanelPlacement(QWidget& window, DefaultsStore& defaults); // both outlive this object
    ~PanelPlacement() override;

    // Leaves the window where it is when the defaults hold no usable place.
    void restore();
    // Makes Qt ask for the last place at the next showing, so that the window manager does not
    // choose another one.
    void keepPlace();
    // Moves the window to the place that the user gave it, as far as the screens have room there.
    void bringOntoScreen();
    void followScreens(); // from now on adjusts the window when the screens change

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QRect place() const; // the present place of the window
    [[nodiscard]] QRect placeInView() const; // the place that it shall have
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
    QTimer m_rest; // runs after a move by the user until the window rests
    QTimer m_settling; // runs while the window manager may still move the window
    bool m_isToBeRepeated = false; // adjust again if the window manager undoes it
    bool m_isOwed = false; // adjust when the window is no longer maximised
    bool m_isUnsaved = false;
};

} // namespace kestrel
