#include "app/TerminationSignals.h"

#include "app/EndDeadline.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace kestrel {

namespace {
std::atomic<int> signalPipe { -1 };

// Calls only functions that are safe in a signal handler.
void noteSignal(int)
{
    const int savedErrno = errno;
    if (!EndDeadline::isSet()) // a signal that is repeated changes no deadline
        EndDeadline::set(TerminationSignals::PatienceSeconds, EXIT_FAILURE);
    const char byte = 0;
    // If the pipe is full, an earlier byte in it already says the same.
    [[maybe_unused]] const auto written = ::write(signalPipe, &byte, 1);
    errno = savedErrno;
}

// Children that the program starts get the default back, which they would not with SIG_IGN.
void passOver(int) { }

// Returns what the signal did before.
struct sigaction set(int number, void (*handler)(int))
{
    struct sigaction action { };
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    struct sigaction previous { };
    ::sigaction(number, &action, &previous);
    return previous;
}

void makeNonBlocking(int descriptor)
{
    ::fcntl(descriptor, F_SETFL, O_NONBLOCK);
    ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
}
} // namespace

TerminationSignals::TerminationSignals(
    MainLoop& mainLoop, std::span<const int> numbers, std::function<void()> terminate)
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
    for (const int number : numbers)
        handle(number, noteSignal);
    for (const int number : { SIGPIPE, SIGXFSZ })
        handle(number, passOver);
}

TerminationSignals::~TerminationSignals()
{
    for (const int number : m_handled) {
        struct sigaction now { };
        ::sigaction(number, nullptr, &now);
        if (now.sa_handler == noteSignal) // else a deadline's
            set(number, passOver);
    }
    signalPipe = -1;
    m_watch.reset();
    ::close(m_readEnd);
    ::close(m_writeEnd);
}

void TerminationSignals::handle(int number, void (*handler)(int))
{
    const struct sigaction previous = set(number, handler);
    // Whoever started the program, or a library, has other plans with the signal: nohup, for
    // example. SIGTERM always ends.
    if (previous.sa_handler != SIG_DFL && number != SIGTERM)
        ::sigaction(number, &previous, nullptr);
    else
        m_handled.push_back(number);
}

void TerminationSignals::readPending()
{
    std::array<char, 16> bytes;
    while (::read(m_readEnd, bytes.data(), bytes.size()) > 0) { }
    EndDeadline::cancel();
    m_terminate();
}

} // namespace kestrel
