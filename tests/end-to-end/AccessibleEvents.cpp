#include "tests/end-to-end/AccessibleEvents.h"

#include "tests/end-to-end/AccessibleObject.h"

#include <stdexcept>

namespace kestrel::test {

AccessibleEvents::AccessibleEvents(QDBusConnection bus)
{
    if (!bus.connect({}, {}, "org.a11y.atspi.Event.Object", "PropertyChange", this,
            SLOT(propertyChanged(QDBusMessage)))
        || !bus.connect({}, {}, "org.a11y.atspi.Event.Object", "StateChanged", this,
            SLOT(stateChanged(QDBusMessage))))
        throw std::runtime_error("no events from the accessibility bus");
    for (const char* kind :
        { "object:property-change:accessible-description", "object:state-changed:showing" })
        static_cast<void>(AccessibleObject::tellChanges(bus, kind));
}

void AccessibleEvents::propertyChanged(const QDBusMessage& signal)
{
    if (signal.arguments().value(0) == "accessible-description")
        m_descriptions.push_back({ signal.path(), std::chrono::steady_clock::now() });
}

void AccessibleEvents::stateChanged(const QDBusMessage& signal)
{
    if (signal.arguments().value(0) == "showing" && signal.arguments().value(1) == 1)
        m_shown.push_back({ signal.path(), std::chrono::steady_clock::now() });
}

} // namespace kestrel::test
