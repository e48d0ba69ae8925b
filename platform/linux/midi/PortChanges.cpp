#include "platform/linux/midi/PortChanges.h"

#include <algorithm>
#include <utility>

namespace kestrel {

namespace {
unsigned kindOf(PortDirection direction, bool isAdded)
{
    if (direction == PortDirection::Output)
        return isAdded ? PortChanges::SourceAdded : PortChanges::SourceRemoved;
    return isAdded ? PortChanges::DestinationAdded : PortChanges::DestinationRemoved;
}
} // namespace

void PortChanges::came(const PortListing& port, Before before, TimePoint now)
{
    if (before == Before::Present)
        count(port, true, kindOf(port.direction, true), now);
    else
        note(port, true, now);
}

void PortChanges::went(const PortListing& port, TimePoint now)
{
    note(port, false, now);
}

void PortChanges::cut(const PortListing& port, TimePoint now)
{
    count(port, true, kindOf(port.direction, false), now);
}

void PortChanges::tryAgain(TimePoint now)
{
    m_tryAgain = std::min(m_tryAgain, now);
}

void PortChanges::want(const PortListing& port)
{
    m_wanted.insert(port);
    know(std::string(clientOf(port.name)));
}

void PortChanges::note(const PortListing& port, bool isPresent, TimePoint now)
{
    const auto at = m_changes.find(port);
    const bool isUndone = at != m_changes.end() && at->second.wasPresent == isPresent;
    if (isUndone && !m_wanted.contains(port))
        m_changes.erase(at);
    else
        count(port, !isPresent, kindOf(port.direction, isPresent), now);
}

void PortChanges::count(const PortListing& port, bool wasPresent, unsigned kind, TimePoint now)
{
    Change& change = m_changes.try_emplace(port, Change { .wasPresent = wasPresent }).first->second;
    change.kinds |= kind;
    change.settled = now + Settling;
}

PortChanges::Due PortChanges::due() const
{
    Due due { .familiar = m_tryAgain };
    for (const auto& [port, change] : m_changes) {
        TimePoint& time
            = m_familiarClients.contains(clientOf(port.name)) ? due.familiar : due.other;
        time = std::min(time, change.settled);
    }
    return due;
}

unsigned PortChanges::take()
{
    unsigned kinds
        = std::exchange(m_tryAgain, TimePoint::max()) == TimePoint::max() ? 0u : SourceAdded;
    for (const auto& [port, change] : m_changes)
        kinds |= change.kinds;
    m_changes.clear();
    return kinds;
}

} // namespace kestrel
