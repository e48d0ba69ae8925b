#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kestrel::bench {

// Times of one candidate, pooled over its rounds.
class Distribution {
public:
    void add(std::int64_t nanoseconds);
    void pool(const Distribution& other);

    [[nodiscard]] std::size_t count() const { return m_nanoseconds.size(); }
    // The smallest time that at least `percent` of all times do not exceed (nearest rank, so always
    // a time that was measured), in µs. 100 is the longest; 0 when there are no times.
    [[nodiscard]] double microsecondsAt(double percent) const;

private:
    std::vector<std::int64_t> m_nanoseconds;
};

} // namespace kestrel::bench
