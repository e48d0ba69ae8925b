#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace kestrel {

struct Notification {
    QString name;
    const QObject* object = nullptr; // who posted it; valid while the notification is handled
};

// Hands named notifications to whoever asked for them, before the posting call returns and in the
// order in which they asked. Main thread only.
class NotificationCenter {
public:
    using Handler = std::function<void(const Notification&)>;

    // Ends when destroyed, also while a notification is being handled and after the centre.
    class Observation;

    NotificationCenter();
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    // From anybody, unless an object is named. An observer that is added while a notification is
    // being handled gets the next one.
    [[nodiscard]] Observation addObserver(
        const QString& name, Handler handler, const QObject* object = nullptr);

    void post(const QString& name, const QObject* object = nullptr);

private:
    struct Observer;

    std::vector<std::weak_ptr<Observer>> m_observers;
};

class NotificationCenter::Observation {
public:
    Observation() = default;

private:
    friend class NotificationCenter;
    explicit Observation(std::shared_ptr<Observer> observer)
        : m_observer(std::move(observer))
    {
    }

    std::shared_ptr<Observer> m_observer;
};

// The names of the notifications that the parts of the interface exchange.
namespace NotificationName {
inline const QString windowWillClose = QStringLiteral("NSWindowWillCloseNotification");
inline const QString refreshShortcutName = QStringLiteral("refreshShortcutName");
inline const QString hideUserAssignEditBox = QStringLiteral("hideUserAssignEditBox");
} // namespace NotificationName

} // namespace kestrel
