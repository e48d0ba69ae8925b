#pragma once

#include <QList>
#include <QRect>

#include <optional>
#include <string>
#include <string_view>

class QWidget;

namespace kestrel {

class DefaultsStore;

// Keeps the last place of a window in the user defaults, as text: left, bottom, width and height of
// its frame and of its screen, in screen coordinates with the origin at the lower left.
class SavedWindowFrame {
public:
    SavedWindowFrame(std::string_view autosaveName, DefaultsStore& defaults);

    // Leaves the saved frame alone while the window is not shown.
    void save(const QWidget& window);

    // Moves the window to the saved frame, onto a screen if necessary. The window keeps its size.
    // If no usable frame is saved, the content goes to `content`, which has its origin at the lower
    // left, and is moved until it is wholly on a screen that has room for it.
    void restore(QWidget& window, const QRect& content, const QList<QRect>& screens) const;

    // The room for the window's content on a screen of that size: the screen without the frame of
    // the window, or without a likely frame if the window was never shown.
    [[nodiscard]] static QSize contentRoom(const QWidget& window, const QSize& screen);

    // No value unless the text is a frame.
    [[nodiscard]] static std::optional<QRect> parsed(std::string_view text);

private:
    std::string m_key;
    DefaultsStore& m_defaults;
};

} // namespace kestrel
