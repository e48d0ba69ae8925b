#pragma once

#include "platform/linux/midi/PortPairing.h"

#include <chrono>
#include <map>
#include <set>
#include <string>

namespace kestrel {

// Collects the changes of other clients' ports until they have settled. A port that goes and
// returns meanwhile, or comes and goes, has not changed. A wanted port is an exception: its
// connection is gone as well, so each of its changes counts.
class PortChanges {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    enum Kinds : unsigned {
        SourceRemoved = 1,
        DestinationRemoved = 2,
        SourceAdded = 4,
        DestinationAdded = 8
    };
    // How long a change must stand before it counts.
    static constexpr std::chrono::milliseconds Settling { 250 };

    enum class Before { Absent, Present };

    // `before` is Present for a port that was listed already and can be connected only now.
    void came(const PortListing& port, Before before, TimePoint now);
    // The removal of a wanted port has settled at once.
    void went(const PortListing& port, TimePoint now);
    // Counts the cut connection of a wanted source as its removal, because both ask for a new
    // connection.
    void cut(const PortListing& port, TimePoint now);
    // The receiver of the changes relies on a connection with this port.
    void want(const PortListing& port) { m_wanted.insert(port); }
    [[nodiscard]] bool isWanted(const PortListing& port) const { return m_wanted.contains(port); }

    // When the next change has settled. TimePoint::max() when there is none.
    [[nodiscard]] TimePoint due() const;
    // Returns the kinds of all changes if one of them has settled, and forgets them. The others go
    // with it, because they often belong to the same burst.
    [[nodiscard]] unsigned take(TimePoint now);

private:
    struct Change {
        bool wasPresent = false;
        unsigned kinds = 0;
        TimePoint settled {};
    };

    void note(const PortListing& port, bool wasPresent, bool isPresent, TimePoint now);

    std::map<PortListing, Change> m_changes;
    std::set<PortListing> m_wanted;
};

} // namespace kestrel
