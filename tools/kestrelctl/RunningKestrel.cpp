#include "tools/kestrelctl/RunningKestrel.h"

#include "control/InstanceMessageReader.h"

#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <thread>
#include <utility>

namespace kestrel::ctl {

namespace {
using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds PauseOfFullQueue { 50 };

// The rest of the time in milliseconds, as poll() takes it; -1 for no limit.
int rest(const std::optional<Clock::time_point>& deadline)
{
    if (!deadline)
        return -1;
    const auto left
        = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
    return static_cast<int>(std::max<decltype(left)>(left, 0));
}
} // namespace

RunningKestrel::RunningKestrel(QString socket, Milliseconds patience)
    : m_socket(std::move(socket))
    , m_patience(patience)
{
}

RunningKestrel::~RunningKestrel()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

RunningKestrel::Reply RunningKestrel::ask(InstanceMessage::Kind request)
{
    const Deadline deadline = Clock::now() + m_patience;
    switch (const int error = connectUntil(deadline)) {
    case 0:
        break;
    case ENOENT:
    case ECONNREFUSED: // a socket that a killed program has left behind
        return { Outcome::NotRunning, {}, "Kestrel is not running." };
    case EAGAIN:
        return unanswered();
    default:
        return { Outcome::Refused, {},
            m_socket.toStdString() + ": " + std::generic_category().message(error) + '.' };
    }
    if (!send(InstanceMessage { request, {} }.encoded(), deadline))
        return unanswered();
    const auto answer = receive(deadline);
    if (!answer)
        return unanswered();
    if (answer->kind == InstanceMessage::Kind::Refused)
        return { Outcome::Refused, *answer, answer->body.toStdString() };
    return { Outcome::Answered, *answer, {} };
}

std::optional<InstanceMessage> RunningKestrel::next()
{
    return receive({});
}

RunningKestrel::Reply RunningKestrel::unanswered() const
{
    const auto seconds = std::chrono::duration<double>(m_patience).count();
    return { Outcome::NoAnswer, {},
        m_isLate ? "Kestrel runs, but it has not answered within "
                + QString::number(seconds).toStdString() + " seconds."
                 : "Kestrel has closed the connection. It is ending." };
}

// A socket whose queue is full refuses with EAGAIN at once.
int RunningKestrel::connectUntil(const Deadline& deadline)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    const QByteArray path = QFile::encodeName(m_socket);
    if (path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return ENAMETOOLONG;
    std::copy(path.begin(), path.end(), address.sun_path);
    m_descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    if (m_descriptor < 0)
        return errno;
    ::fcntl(m_descriptor, F_SETFD, FD_CLOEXEC);
    ::fcntl(m_descriptor, F_SETFL, O_NONBLOCK);
    const auto* const where = reinterpret_cast<const sockaddr*>(&address);
    while (::connect(m_descriptor, where, sizeof address) != 0) {
        if (errno != EAGAIN)
            return errno;
        m_isLate = rest(deadline) == 0;
        if (m_isLate)
            return EAGAIN;
        std::this_thread::sleep_for(PauseOfFullQueue);
    }
    return 0;
}

bool RunningKestrel::send(const QByteArray& bytes, const Deadline& deadline) const
{
    qsizetype sent = 0;
    while (sent < bytes.size()) {
        if (!waitFor(POLLOUT, deadline))
            return false;
        const auto size = ::write(
            m_descriptor, bytes.constData() + sent, static_cast<std::size_t>(bytes.size() - sent));
        if (size < 0 && errno != EAGAIN && errno != EINTR)
            return false;
        sent += std::max<ssize_t>(size, 0);
    }
    return true;
}

std::optional<InstanceMessage> RunningKestrel::receive(const Deadline& deadline)
{
    using State = InstanceMessageReader::State;
    InstanceMessageReader reader;
    std::array<char, 16 * 1024> buffer;
    for (State state = State::Incomplete; state == State::Incomplete;) {
        m_isLate = !waitFor(POLLIN, deadline);
        if (m_isLate)
            return {};
        const auto wanted = std::min(static_cast<std::size_t>(reader.missing()), buffer.size());
        const auto size = ::read(m_descriptor, buffer.data(), wanted);
        if (size < 0 && (errno == EAGAIN || errno == EINTR))
            continue;
        if (size <= 0)
            return {};
        state = reader.add(QByteArray(buffer.data(), size));
        if (state == State::Malformed)
            return InstanceMessage::refused("The running Kestrel speaks another protocol.");
    }
    return reader.message();
}

bool RunningKestrel::waitFor(short events, const Deadline& deadline) const
{
    pollfd ready { m_descriptor, events, 0 };
    int result = 0;
    do
        result = ::poll(&ready, 1, rest(deadline));
    while (result < 0 && errno == EINTR);
    return result > 0;
}

} // namespace kestrel::ctl
