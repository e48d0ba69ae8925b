#include "app/EndDeadline.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <string_view>

namespace kestrel {

namespace {
std::atomic<int> exitCodeAtDeadline { 0 };
std::atomic<std::int64_t> deadlineMs { 0 }; // of the monotonic clock
struct sigaction actionBefore { }; // for SIGALRM, without a deadline

std::int64_t nowMs()
{
    timespec now {};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t { now.tv_sec } * 1000 + now.tv_nsec / 1'000'000;
}

void endIfItIsTime(int)
{
    if (nowMs() < deadlineMs) { // another process has sent the signal, or the clocks differ
        ::alarm(1);
        return;
    }
    static constexpr std::string_view Text
        = "kestrel: ended without waiting any longer for the display or the system\n";
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, Text.data(), Text.size());
    ::_exit(exitCodeAtDeadline);
}
} // namespace

void EndDeadline::set(unsigned seconds, int exitCode)
{
    exitCodeAtDeadline = exitCode;
    deadlineMs = nowMs() + std::int64_t { seconds } * 1000;
    struct sigaction action { };
    action.sa_handler = endIfItIsTime;
    sigemptyset(&action.sa_mask);
    struct sigaction replaced { };
    ::sigaction(SIGALRM, &action, &replaced);
    if (replaced.sa_handler != endIfItIsTime)
        actionBefore = replaced;
    ::alarm(seconds);
}

bool EndDeadline::isSet()
{
    return deadlineMs != 0;
}

void EndDeadline::cancel()
{
    ::alarm(0);
    deadlineMs = 0;
    ::sigaction(SIGALRM, &actionBefore, nullptr);
}

} // namespace kestrel
