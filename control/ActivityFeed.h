#pragma once

#include <QByteArray>

#include <cstdint>

namespace kestrel {

class ActivityLog;

// Reads the activity for one follower, from the oldest event that the log holds. The log itself is
// the buffer: a follower that is too slow loses the events that leave the log, and is told how
// many.
class ActivityFeed {
public:
    static constexpr std::uint64_t EventsInOneBatch = 128;

    // `log` outlives the feed.
    explicit ActivityFeed(const ActivityLog& log);

    // The next lines, each with a line feed. Empty when there is nothing new.
    [[nodiscard]] QByteArray next();

private:
    const ActivityLog& m_log;
    std::uint64_t m_next;
};

} // namespace kestrel
