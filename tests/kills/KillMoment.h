#pragma once

#include <chrono>
#include <filesystem>
#include <random>

namespace kestrel::test {

// Chooses the moment at which a program is killed. One half of the moments is spread evenly over
// the time in which the program works. The other half follows a change in a folder by at most a few
// hundred microseconds, because writing a file takes far less time than everything around it.
class KillMoment {
public:
    using Microseconds = std::chrono::microseconds;

    // Watches the folder from now on. Throws std::system_error when it cannot be watched.
    KillMoment(std::mt19937& random, const std::filesystem::path& folder);
    ~KillMoment();
    KillMoment(const KillMoment&) = delete;
    KillMoment& operator=(const KillMoment&) = delete;

    // Waits until the moment, which comes after `longest` at the latest.
    void wait(Microseconds longest);

private:
    std::mt19937& m_random;
    int m_watch = -1;
};

// Waits for a random time up to `longest`.
void waitAtRandom(std::mt19937& random, std::chrono::microseconds longest);

} // namespace kestrel::test
