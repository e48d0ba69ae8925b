#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace kestrel {

struct Notification {
    QString name;
    const QObject* object = nullptr; // the sender; valid while the notification is handled
};

// Hands named notifications to their observers before the posting call returns, in the order in
// which the observers were added. Main thread only.
class NotificationCenter {
public:
    using Handler = std::function<void(const Notification&)>;

    // Its end ends the observation. It may end while a notification is handled, and after the
    // centre.
    class Observation;

    NotificationCenter();
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    // With an `object`, only its notifications. An observer that is added while a notification is
    // handled gets the next one.
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

// Notifications between the folders of the interface.
namespace NotificationName {
inline const QString windowWillClose = QStringLiteral("NSWindowWillCloseNotification");
inline const QString refreshShortcutName = QStringLiteral("refreshShortcutName");
inline const QString hideUserAssignEditBox = QStringLiteral("hideUserAssignEditBox");
} // namespace NotificationName

} // namespace kestrel
