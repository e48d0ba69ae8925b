#pragma once

#include <ctime>

namespace kestrel::test {

// The time in milliseconds that this process has spent on processors since the object was made. It
// does not count the time in which other programs keep the process waiting.
class ProcessorTime {
public:
    [[nodiscard]] double elapsedMs() const
    {
        return 1000.0 * static_cast<double>(std::clock() - m_start) / CLOCKS_PER_SEC;
    }

private:
    std::clock_t m_start = std::clock();
};

} // namespace kestrel::test
