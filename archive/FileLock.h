#pragma once

#include <QString>

#include <chrono>
#include <system_error>

namespace kestrel {

// An exclusive lock on a file for as long as the object lives. The kernel releases it when the
// process ends, also when it is killed; a lock file with a process number could be left behind.
class FileLock {
public:
    // Waits until the lock is free or the time has passed. The file itself is never removed.
    FileLock(const QString& path, std::chrono::milliseconds timeout);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    [[nodiscard]] bool isHeld() const { return m_isHeld; }
    // Why the file could not be locked. No error while another holds the lock.
    [[nodiscard]] std::error_code error() const { return m_error; }

private:
    int m_descriptor = -1;
    bool m_isHeld = false;
    std::error_code m_error;
};

} // namespace kestrel
