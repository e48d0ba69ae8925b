#include "archive/FileLock.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace kestrel {

namespace {
constexpr std::chrono::milliseconds Pause(2);

// O_NONBLOCK: a fifo in the place of the file would otherwise block on some systems.
constexpr int Flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;

std::error_code lastError()
{
    return { errno, std::generic_category() };
}
} // namespace

FileLock::FileLock(const QString& path, std::chrono::milliseconds timeout)
    : m_descriptor(open(QFile::encodeName(path).constData(), Flags, S_IRUSR | S_IWUSR))
{
    if (m_descriptor < 0) {
        m_error = lastError();
        return;
    }
    const auto end = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        m_isHeld = flock(m_descriptor, LOCK_EX | LOCK_NB) == 0;
        if (m_isHeld)
            return;
        if (errno != EWOULDBLOCK && errno != EINTR) {
            m_error = lastError();
            return;
        }
        if (std::chrono::steady_clock::now() >= end)
            return;
        std::this_thread::sleep_for(Pause);
    }
}

FileLock::~FileLock()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

} // namespace kestrel
