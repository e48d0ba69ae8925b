#include "platform/linux/midi/Changes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;

TEST(Changes, what_holds_already_is_not_waited_for)
{
    Changes changes;
    EXPECT_TRUE(changes.waitUntil([] { return true; }, 0ms));
}

TEST(Changes, what_never_holds_is_given_up)
{
    Changes changes;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(changes.waitUntil([] { return false; }, 20ms));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 20ms);
}

TEST(Changes, a_change_makes_it_look_again)
{
    Changes changes;
    std::atomic<int> looks { 0 };
    std::atomic<bool> holds { false };
    std::thread other([&] {
        while (looks == 0)
            std::this_thread::yield();
        changes.happened(); // without effect
        while (looks == 1)
            std::this_thread::yield();
        holds = true;
        changes.happened();
    });
    EXPECT_TRUE(changes.waitUntil(
        [&] {
            const bool held = holds;
            ++looks; // last, so that the other thread goes on only after this look at `holds`
            return held;
        },
        20s));
    other.join();
    EXPECT_GE(looks, 3);
}

TEST(Changes, a_change_during_the_look_is_not_missed)
{
    Changes changes;
    int looks = 0;
    EXPECT_TRUE(changes.waitUntil(
        [&] {
            if (++looks == 1)
                changes.happened();
            return looks == 2;
        },
        20s));
}

} // namespace
} // namespace kestrel::test
