#pragma once

#include <QObject>

namespace kestrel {

// Keeps the connections of windows with the application from accumulating. Qt connects a window
// that gets the focus, and disconnects it when the focus leaves it. It does not disconnect a window
// that closes while it has the focus, and connects it once more when it is shown again.
class FocusConnections : public QObject {
public:
    FocusConnections();

    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace kestrel
