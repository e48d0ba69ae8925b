#include "platform/macos/ArrivalQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>

namespace kestrel::test {
namespace {

using Queue = ArrivalQueue<int>;
using testing::ElementsAre;
using testing::IsEmpty;

bool push(Queue& queue, int value)
{
    return queue.push(std::make_unique<Queue::Arrival>(value));
}

std::vector<int> takeAll(Queue& queue)
{
    std::vector<int> values;
    queue.drain([&values](int value) { values.push_back(value); });
    return values;
}

TEST(ArrivalQueue, gives_everything_once_oldest_first)
{
    Queue queue;
    EXPECT_THAT(takeAll(queue), IsEmpty());
    for (const int value : { 1, 2, 3 })
        static_cast<void>(push(queue, value));
    EXPECT_THAT(takeAll(queue), ElementsAre(1, 2, 3));
    EXPECT_THAT(takeAll(queue), IsEmpty());
}

TEST(ArrivalQueue, tells_the_producer_when_the_consumer_must_be_woken)
{
    Queue queue;
    EXPECT_TRUE(push(queue, 1));
    EXPECT_FALSE(push(queue, 2));
    takeAll(queue);
    EXPECT_TRUE(push(queue, 3));
}

TEST(ArrivalQueue, what_arrives_while_it_is_drained_waits_for_the_next_time)
{
    Queue queue;
    static_cast<void>(push(queue, 1));
    std::vector<int> values;
    queue.drain([&](int value) {
        values.push_back(value);
        EXPECT_TRUE(push(queue, value + 1));
    });
    EXPECT_THAT(values, ElementsAre(1));
    EXPECT_THAT(takeAll(queue), ElementsAre(2));
}

TEST(ArrivalQueue, a_drain_inside_a_drain_takes_what_is_left_before_what_came_since)
{
    Queue queue;
    for (const int value : { 1, 2, 3 })
        static_cast<void>(push(queue, value));
    std::vector<int> values;
    const std::function<void(int)> note = [&](int value) {
        values.push_back(value);
        if (value != 1)
            return;
        static_cast<void>(push(queue, 4));
        queue.drain(note);
    };
    queue.drain(note);
    EXPECT_THAT(values, ElementsAre(1, 2, 3, 4));
}

TEST(ArrivalQueue, two_producers_lose_nothing_and_each_keeps_its_order)
{
    constexpr int Count = 20000;
    Queue queue;
    std::vector<int> values;
    const auto produce = [&queue](int sign) {
        for (int i = 1; i <= Count; ++i)
            static_cast<void>(push(queue, sign * i));
    };
    std::thread first(produce, 1);
    std::thread second(produce, -1);
    while (values.size() < 2 * Count)
        queue.drain([&values](int value) { values.push_back(value); });
    first.join();
    second.join();
    int lastOfFirst = 0;
    int lastOfSecond = 0;
    for (const int value : values) {
        int& last = value > 0 ? lastOfFirst : lastOfSecond;
        ASSERT_EQ(std::abs(value), last + 1);
        last = std::abs(value);
    }
}

} // namespace
} // namespace kestrel::test
