#pragma once

#include <QString>

#include <chrono>

namespace kestrel {

// Keeps other processes out as long as it lives. The kernel lets it go with its process, so that
// a killed one never leaves the lock behind, as a lock file with a process number in it could.
class FileLock {
public:
    // Waits until the lock is free or the time has passed. The file stays where it is.
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
