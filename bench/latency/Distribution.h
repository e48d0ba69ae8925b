#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrel::bench {

// The measured times of one candidate, pooled over its rounds.
class Distribution {
public:
    void add(std::int64_t nanoseconds);
    void pool(const Distribution& other);

    [[nodiscard]] std::size_t count() const { return m_nanoseconds.size(); }
    // The smallest time, in µs, that at least `percent` of all times do not exceed. It is always a
    // time that was measured (nearest rank). 100 gives the longest time. Returns 0 when there are
    // no times.
    [[nodiscard]] double microsecondsAt(double percent) const;

private:
    std::vector<std::int64_t> m_nanoseconds;
};

} // namespace kestrel::bench
