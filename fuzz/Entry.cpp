#include "fuzz/Target.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

// The processor time that each byte of an input may cost, in a build with sanitizers. The time that
// an input of no bytes may cost comes from CMake. An input that costs more makes work that grows
// faster than its size.
constexpr double SecondsPerByte = 20e-6;

double processorSeconds()
{
    timespec now {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

} // namespace

// The entry of libFuzzer and of Replay.cpp.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const double start = processorSeconds();
    const std::string fault = kestrel::fuzz::fault({ data, size });
    const double seconds = processorSeconds() - start;
    if (!fault.empty()) {
        std::fprintf(stderr, "%s\n", fault.c_str());
        std::abort();
    }
    if (seconds > KESTREL_FUZZ_BASE_SECONDS + SecondsPerByte * static_cast<double>(size)) {
        std::fprintf(stderr, "%.3f s of processor time for %zu bytes\n", seconds, size);
        std::abort();
    }
    return 0;
}
