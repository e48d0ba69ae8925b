#pragma once

#include <time.h>

#include <cstdint>

namespace kestrel::bench {

// All times of the bench are taken from CLOCK_MONOTONIC.
inline std::int64_t monotonicNanoseconds()
{
    timespec now {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t { now.tv_sec } * 1'000'000'000 + now.tv_nsec;
}

} // namespace kestrel::bench
