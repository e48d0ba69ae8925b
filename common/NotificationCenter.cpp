#include "common/NotificationCenter.h"

namespace kestrel {

struct NotificationCenter::Observer {
    QString name;
    const QObject* object = nullptr;
    Handler handler;
};

NotificationCenter::NotificationCenter() = default;
NotificationCenter::~NotificationCenter() = default;

NotificationCenter::Observation NotificationCenter::addObserver(
    const QString& name, Handler handler, const QObject* object)
{
    auto observer = std::make_shared<Observer>(Observer { name, object, std::move(handler) });
    std::erase_if(m_observers, [](const auto& known) { return known.expired(); });
    m_observers.push_back(observer);
    return Observation(std::move(observer));
}

void NotificationCenter::post(const QString& name, const QObject* object)
{
    // A handler may add observations and end any, its own too.
    const auto observers = m_observers;
    for (const auto& known : observers) {
        const auto observer = known.lock();
        if (observer && observer->name == name && (!observer->object || observer->object == object))
            observer->handler({ name, object });
    }
}

} // namespace kestrel
