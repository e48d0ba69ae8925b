#include "tests/kills/KillMoment.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <thread>

namespace kestrel::test {

namespace {
constexpr std::chrono::microseconds AfterChange { 400 };

bool tossesCoin(std::mt19937& random)
{
    return std::bernoulli_distribution()(random);
}
} // namespace

KillMoment::KillMoment(std::mt19937& random, const std::filesystem::path& folder)
    : m_random(random)
    , m_watch(::inotify_init1(IN_CLOEXEC))
{
    if (m_watch < 0
        || ::inotify_add_watch(
               m_watch, folder.c_str(), IN_CREATE | IN_MODIFY | IN_MOVED_TO | IN_DELETE)
            < 0)
        throw std::system_error(errno, std::generic_category(), "inotify");
}

KillMoment::~KillMoment()
{
    ::close(m_watch);
}

void KillMoment::wait(Microseconds longest)
{
    if (tossesCoin(m_random)) {
        waitAtRandom(m_random, longest);
        return;
    }
    pollfd changed { m_watch, POLLIN, 0 };
    const auto patience = std::chrono::ceil<std::chrono::milliseconds>(longest);
    if (::poll(&changed, 1, static_cast<int>(patience.count())) > 0)
        waitAtRandom(m_random, AfterChange);
}

void waitAtRandom(std::mt19937& random, std::chrono::microseconds longest)
{
    std::uniform_int_distribution<std::chrono::microseconds::rep> length(0, longest.count());
    std::this_thread::sleep_for(std::chrono::microseconds(length(random)));
}

} // namespace kestrel::test
