#include "bench/latency/Distribution.h"

#include <algorithm>
#include <cmath>

namespace kestrel::bench {

void Distribution::add(std::int64_t nanoseconds)
{
    m_nanoseconds.push_back(nanoseconds);
}

void Distribution::pool(const Distribution& other)
{
    m_nanoseconds.insert(
        m_nanoseconds.end(), other.m_nanoseconds.begin(), other.m_nanoseconds.end());
}

double Distribution::microsecondsAt(double percent) const
{
    if (m_nanoseconds.empty())
        return 0;
    auto sorted = m_nanoseconds;
    const double rank = std::ceil(percent / 100 * static_cast<double>(sorted.size()));
    const auto index = std::clamp(
        static_cast<std::size_t>(std::max(rank, 1.0)) - 1, std::size_t { 0 }, sorted.size() - 1);
    const auto at = sorted.begin() + static_cast<std::ptrdiff_t>(index);
    std::nth_element(sorted.begin(), at, sorted.end());
    return static_cast<double>(*at) / 1000;
}

} // namespace kestrel::bench
