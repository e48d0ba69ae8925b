#pragma once

#include <time.h>

#include <cstdint>

namespace kestrel::bench {

// The one clock of every time that is taken: CLOCK_MONOTONIC.
inline std::int64_t monotonicNanoseconds()
{
    timespec now {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t { now.tv_sec } * 1'000'000'000 + now.tv_nsec;
}

} // namespace kestrel::bench
