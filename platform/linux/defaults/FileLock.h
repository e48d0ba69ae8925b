#pragma once

#include <QString>

#include <chrono>

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

private:
    int m_descriptor = -1;
    bool m_isHeld = false;
};

} // namespace kestrel
