#pragma once

#include "activity/ActivityEvent.h"

#include <cstdint>
#include <vector>

namespace kestrel {

// The last events, oldest first. It is always kept, so that people can look it up after something
// has failed. Readers ask from time to time whether count() has grown. Main thread only.
class ActivityLog {
public:
    static constexpr std::size_t Capacity = 4096;

    ActivityLog();

    // Takes the place of the oldest event when the log is full. Allocates nothing.
    void record(const ActivityEvent& event);

    // Events have running numbers that are never used again. The log holds those from first() up to
    // count(), not included.
    [[nodiscard]] std::uint64_t first() const
    {
        return m_count > Capacity ? m_count - Capacity : 0;
    }
    [[nodiscard]] std::uint64_t count() const { return m_count; }
    // `number` is one that the log holds.
    [[nodiscard]] const ActivityEvent& event(std::uint64_t number) const;

private:
    std::vector<ActivityEvent> m_events;
    std::uint64_t m_count = 0;
};

} // namespace kestrel
