#pragma once

#include <QWidget>

namespace kestrel {

// The floating window of the plug-in panel. It leaves focus and activation to whoever has them.
class DSPWindow : public QWidget {
    Q_OBJECT

public:
    DSPWindow();

    [[nodiscard]] bool canBecomeMainWindow() const { return false; }
    [[nodiscard]] bool canBecomeKeyWindow() const { return false; }
};

} // namespace kestrel
