#pragma once

#include <atomic>

namespace kestrel {

// A descriptor that is readable from a call of raise() until the reader calls lower().
class Wakeup {
public:
    Wakeup(); // throws std::system_error
    ~Wakeup();
    Wakeup(const Wakeup&) = delete;
    Wakeup& operator=(const Wakeup&) = delete;

    // May be called on any thread, also on the audio thread. Never waits. Makes a system call only
    // when the descriptor is not raised already.
    void raise();
    // The reader calls this before it looks for news, so that later news raises the descriptor
    // again.
    void lower();

    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    int m_descriptor = -1;
    std::atomic<bool> m_raised { false };
};

} // namespace kestrel
