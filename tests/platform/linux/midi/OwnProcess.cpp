#include "tests/platform/linux/midi/OwnProcess.h"

#include <chrono>
#include <filesystem>
#include <iterator>
#include <thread>

namespace kestrel::test::OwnProcess {

namespace {
std::size_t entriesOf(const char* directory)
{
    const std::filesystem::directory_iterator entries(directory);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

bool fallsTo(std::size_t count, std::size_t (*number)())
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (number() > count) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}
} // namespace

std::size_t descriptors()
{
    return entriesOf("/proc/self/fd");
}

std::size_t threads()
{
    return entriesOf("/proc/self/task");
}

bool threadsFallTo(std::size_t count)
{
    return fallsTo(count, threads);
}

bool descriptorsFallTo(std::size_t count)
{
    return fallsTo(count, descriptors);
}

} // namespace kestrel::test::OwnProcess
