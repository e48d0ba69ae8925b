#pragma once

#include <QObject>
#include <QTimer>

#include <string_view>

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
    // For when screens have gone since.
    void bringOntoScreen();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void remember();
    void save();

    QWidget& m_window;
    DefaultsStore& m_defaults;
    QTimer m_rest; // runs after a move until the window has come to rest
    bool m_isUnsaved = false;
};

} // namespace kestrel
