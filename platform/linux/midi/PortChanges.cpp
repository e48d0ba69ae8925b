#include "platform/linux/midi/PortChanges.h"

#include <algorithm>

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
        want(port); // the receiver may have tried it in vain
    note(port, before == Before::Present, true, now);
}

void PortChanges::went(const PortListing& port, TimePoint now)
{
    note(port, true, false, now);
    if (isWanted(port))
        m_changes[port].settled = now;
}

void PortChanges::cut(const PortListing& port, TimePoint now)
{
    Change& change = m_changes.try_emplace(port, Change { .wasPresent = true }).first->second;
    change.kinds |= kindOf(port.direction, false);
    change.settled = now;
}

void PortChanges::note(const PortListing& port, bool wasPresent, bool isPresent, TimePoint now)
{
    const auto [at, isNew] = m_changes.try_emplace(port, Change { .wasPresent = wasPresent });
    Change& change = at->second;
    if (!isNew && isPresent == change.wasPresent && !isWanted(port)) {
        m_changes.erase(at);
        return;
    }
    change.kinds |= kindOf(port.direction, isPresent);
    change.settled = now + Settling;
}

PortChanges::TimePoint PortChanges::due() const
{
    TimePoint due = TimePoint::max();
    for (const auto& [port, change] : m_changes)
        due = std::min(due, change.settled);
    return due;
}

unsigned PortChanges::take(TimePoint now)
{
    if (due() > now)
        return 0;
    unsigned kinds = 0;
    for (const auto& [port, change] : m_changes)
        kinds |= change.kinds;
    m_changes.clear();
    return kinds;
}

} // namespace kestrel
