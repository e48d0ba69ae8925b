#include "platform/linux/midi/Wakeup.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace kestrel {

Wakeup::Wakeup()
    : m_descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (m_descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "eventfd");
}

Wakeup::~Wakeup()
{
    ::close(m_descriptor);
}

void Wakeup::raise()
{
    if (m_raised.exchange(true, std::memory_order_acq_rel))
        return;
    const std::uint64_t one = 1;
    // write() fails only at a count that would take 2^64 calls without a read.
    [[maybe_unused]] const auto size = ::write(m_descriptor, &one, sizeof one);
}

void Wakeup::lower()
{
    std::uint64_t count = 0;
    [[maybe_unused]] const auto size = ::read(m_descriptor, &count, sizeof count);
    m_raised.exchange(false, std::memory_order_acq_rel);
}

} // namespace kestrel
