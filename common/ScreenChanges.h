#pragma once

#include <QTimer>

#include <functional>

class QScreen;

namespace kestrel {

// Tells when screens have come or gone or have another size. Changes that come together are told
// once, when the event loop runs again and Qt knows all of them.
class ScreenChanges : public QObject {
public:
    explicit ScreenChanges(std::function<void()> changed);

private:
    void follow(const QScreen& screen);

    QTimer m_told;
};

} // namespace kestrel
