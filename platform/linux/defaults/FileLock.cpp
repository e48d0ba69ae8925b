#include "platform/linux/defaults/FileLock.h"

#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace kestrel {

namespace {

constexpr std::chrono::milliseconds Pause(2);

} // namespace

FileLock::FileLock(const QString& path, std::chrono::milliseconds timeout)
    : m_descriptor(
        open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR))
{
    if (m_descriptor < 0)
        return;
    const auto end = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        m_isHeld = flock(m_descriptor, LOCK_EX | LOCK_NB) == 0;
        const bool isBusy = !m_isHeld && (errno == EWOULDBLOCK || errno == EINTR);
        if (!isBusy || std::chrono::steady_clock::now() >= end)
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
