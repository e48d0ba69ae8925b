#pragma once

#include <atomic>

namespace kestrel {

// A descriptor that is readable from the moment somebody raises it until its reader lowers it.
class Wakeup {
public:
    Wakeup(); // throws std::system_error
    ~Wakeup();
    Wakeup(const Wakeup&) = delete;
    Wakeup& operator=(const Wakeup&) = delete;

    // From any thread, the audio thread too: never waits, and costs a system call only when it is
    // not raised already.
    void raise();
    // Before looking at what it was raised for: what comes later raises it again.
    void lower();

    [[nodiscard]] int descriptor() const { return m_descriptor; }

private:
    int m_descriptor = -1;
    std::atomic<bool> m_raised { false };
};

} // namespace kestrel
