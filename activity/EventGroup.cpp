#include "activity/EventGroup.h"

#include "link/ConsoleProtocol.h"

namespace kestrel {

EventGroup groupOf(const ActivityEvent& event)
{
    using Outcome = ActivityEvent::Outcome;
    if (event.kind() != ActivityEvent::Kind::Packet)
        return EventGroup::Link;
    switch (event.outcome()) {
    case Outcome::Ignored:
        return EventGroup::Unknown;
    case Outcome::Awaited:
        return event.bytes()[1] == ConsoleProtocol::KeyZoneSelect ? EventGroup::Keys
                                                                  : EventGroup::Panel;
    case Outcome::Answered:
    case Outcome::NotAnswered:
        return EventGroup::Heartbeat;
    case Outcome::Shown:
        return EventGroup::Panel;
    default:
        return EventGroup::Keys;
    }
}

} // namespace kestrel
