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

    // When the next change has settled, of the clients that the receiver relies on and of the
    // others. TimePoint::max() when there is none.
    struct Due {
        TimePoint familiar = TimePoint::max();
        TimePoint other = TimePoint::max();
    };

    // `before` is Present for a port that was listed already and can be connected only now.
    void came(const PortListing& port, Before before, TimePoint now);
    void went(const PortListing& port, TimePoint now);
    // Counts the cut connection of a source as its removal, because both ask for a new connection.
    void cut(const PortListing& port, TimePoint now);
    // The receiver was refused something for lack of an answer. Counts at once as an added source,
    // because that makes the receiver try again.
    void tryAgain(TimePoint now);

    // The receiver has asked for a connection with this port. Its client is familiar from then on.
    void want(const PortListing& port);
    // The receiver has asked for a connection with a port of this client some time ago.
    void know(const std::string& client) { m_familiarClients.insert(client); }

    [[nodiscard]] Due due() const;
    // Returns the kinds of all changes and forgets them. The changes that have not settled yet go
    // with the others, because they often belong to the same burst.
    [[nodiscard]] unsigned take();

private:
    struct Change {
        bool wasPresent = false;
        unsigned kinds = 0;
        TimePoint settled {};
    };

    void note(const PortListing& port, bool isPresent, TimePoint now);
    void count(const PortListing& port, bool wasPresent, unsigned kind, TimePoint now);

    std::map<PortListing, Change> m_changes;
    std::set<PortListing> m_wanted;
    std::set<std::string, std::less<>> m_familiarClients;
    TimePoint m_tryAgain = TimePoint::max();
};

} // namespace kestrel
