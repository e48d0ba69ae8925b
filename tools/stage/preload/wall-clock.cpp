// This library is preloaded into a program whose wall clock a test sets. The file that
// KESTREL_STAGE_CLOCK names holds the number of seconds by which the clock is wrong.

#include <dlfcn.h>
#include <sys/time.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {
time_t error()
{
    long seconds = 0;
    const char* const name = std::getenv("KESTREL_STAGE_CLOCK");
    if (FILE* const file = name ? std::fopen(name, "re") : nullptr) {
        if (std::fscanf(file, "%ld", &seconds) != 1)
            seconds = 0;
        std::fclose(file);
    }
    return seconds;
}
} // namespace

extern "C" int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    using Function = int (*)(clockid_t, timespec*);
    static const auto next = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "clock_gettime"));
    const int result = next(clock, time);
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        time->tv_sec += error();
    return result;
}

extern "C" int gettimeofday(timeval* time, void* zone) noexcept
{
    using Function = int (*)(timeval*, void*);
    static const auto next = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, "gettimeofday"));
    const int result = next(time, zone);
    if (result == 0)
        time->tv_sec += error();
    return result;
}

extern "C" time_t time(time_t* stored) noexcept
{
    timespec now {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    if (stored)
        *stored = now.tv_sec;
    return now.tv_sec;
}
