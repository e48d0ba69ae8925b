#pragma once

#include <QTimer>

#include <functional>

class QScreen;

namespace kestrel {

// Calls a function when screens are added or removed or their available area changes. Changes that
// come together cause one call, from the event loop, when Qt knows all of them.
class ScreenChanges : public QObject {
public:
    explicit ScreenChanges(std::function<void()> changed);

private:
    void follow(const QScreen& screen);

    QTimer m_told;
};

} // namespace kestrel
