#include "app/TerminationSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <utility>

namespace kestrel {

namespace {
constexpr std::array Signals { SIGTERM, SIGINT, SIGHUP };

std::atomic<int> signalPipe { -1 };

// Calls only functions that are safe in a signal handler.
void noteSignal(int)
{
    const int savedErrno = errno;
    const char byte = 0;
    // If the pipe is full, an earlier byte in it already says the same.
    [[maybe_unused]] const auto written = ::write(signalPipe, &byte, 1);
    errno = savedErrno;
}

void setHandler(void (*handler)(int))
{
    struct sigaction action { };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : Signals)
        ::sigaction(number, &action, nullptr);
}

void makeNonBlocking(int descriptor)
{
    ::fcntl(descriptor, F_SETFL, O_NONBLOCK);
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}
} // namespace

TerminationSignals::TerminationSignals(MainLoop& mainLoop, std::function<void()> terminate)
    : m_terminate(std::move(terminate))
{
    int ends[2];
    if (::pipe(ends) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    m_readEnd = ends[0];
    m_writeEnd = ends[1];
    makeNonBlocking(m_readEnd);
    makeNonBlocking(m_writeEnd);
    m_watch = mainLoop.watch(m_readEnd, [this] { readPending(); });
    signalPipe = m_writeEnd;
    setHandler(noteSignal);
}

TerminationSignals::~TerminationSignals()
{
    setHandler(SIG_DFL);
    signalPipe = -1;
    m_watch.reset();
    ::close(m_readEnd);
    ::close(m_writeEnd);
}

void TerminationSignals::readPending()
{
    std::array<char, 16> bytes;
    while (::read(m_readEnd, bytes.data(), bytes.size()) > 0) { }
    m_terminate();
}

} // namespace kestrel
