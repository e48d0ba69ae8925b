#include "platform/linux/midi/Alarm.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace kestrel {

using std::chrono::nanoseconds;
using std::chrono::seconds;

Alarm::Alarm()
    : m_descriptor(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC | TFD_NONBLOCK))
{
    if (m_descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "timerfd_create");
}

Alarm::~Alarm()
{
    ::close(m_descriptor);
}

void Alarm::set(TimePoint time)
{
    itimerspec setting {}; // zero switches the timer off
    if (time != TimePoint::max()) {
        const auto since = std::max<nanoseconds>(time.time_since_epoch(), nanoseconds(1));
        const auto whole = std::chrono::floor<seconds>(since);
        setting.it_value.tv_sec = whole.count();
        setting.it_value.tv_nsec = (since - whole).count();
    }
    ::timerfd_settime(m_descriptor, TFD_TIMER_ABSTIME, &setting, nullptr);
}

void Alarm::lower()
{
    set(TimePoint::max());
}

} // namespace kestrel
