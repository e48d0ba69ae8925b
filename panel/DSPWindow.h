#pragma once

#include <QWidget>

namespace kestrel {

// The floating window of the plug-in panel. It takes neither focus nor activation.
class DSPWindow : public QWidget {
    Q_OBJECT

public:
    DSPWindow();

    [[nodiscard]] bool canBecomeMainWindow() const { return false; }
    [[nodiscard]] bool canBecomeKeyWindow() const { return false; }
};

} // namespace kestrel
