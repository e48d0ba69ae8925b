#pragma once

#include <QList>
#include <QRect>

#include <optional>
#include <string>
#include <string_view>

class QWidget;

namespace kestrel {

class DefaultsStore;

// Where a window was left, kept in the user defaults as text: left, bottom, width and height of
// its frame and of its screen, in screen coordinates with their origin at the lower left.
class SavedWindowFrame {
public:
    SavedWindowFrame(std::string_view autosaveName, DefaultsStore& defaults);

    void save(const QWidget& window);

    // Moves the window there; it keeps its size. The window can be grabbed on one of the screens.
    // Without a saved frame that makes sense the content goes to `content`, which has its origin at
    // the lower left, and is moved until it is wholly on a screen that has room for it.
    void restore(QWidget& window, const QRect& content, const QList<QRect>& screens) const;

    // How much of a screen of that size is left to the content of a window.
    [[nodiscard]] static QSize contentRoom(const QSize& screen);

    // Null unless the text is a frame.
    [[nodiscard]] static std::optional<QRect> parsed(std::string_view text);

private:
    std::string m_key;
    DefaultsStore& m_defaults;
};

} // namespace kestrel
