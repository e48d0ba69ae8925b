#include "platform/macos/ReadGates.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>
#include <vector>

namespace kestrel::test {
namespace {

class NoPackets final : public MIDIPacketList {
public:
    std::optional<MIDIPacket> next() override { return std::nullopt; }
};

void count(MIDIPacketList&, void* refCon, void*)
{
    ++*static_cast<int*>(refCon);
}

TEST(ReadGates, a_delivery_reaches_the_callback_with_both_reference_values)
{
    struct Seen {
        int calls = 0;
        void* srcConnRefCon = nullptr;
    } seen;
    const auto ticket = ReadGates::open(
        [](MIDIPacketList&, void* refCon, void* srcConnRefCon) {
            auto* seen = static_cast<Seen*>(refCon);
            ++seen->calls;
            seen->srcConnRefCon = srcConnRefCon;
        },
        &seen);
    ASSERT_TRUE(ticket);

    int source = 0;
    NoPackets packets;
    ReadGates::deliver(*ticket, packets, &source);
    ReadGates::shut(*ticket);
    EXPECT_EQ(seen.calls, 1);
    EXPECT_EQ(seen.srcConnRefCon, &source);
}

TEST(ReadGates, a_delivery_after_the_shutting_is_dropped)
{
    int calls = 0;
    const auto ticket = ReadGates::open(count, &calls);
    ASSERT_TRUE(ticket);
    ReadGates::shut(*ticket);

    NoPackets packets;
    ReadGates::deliver(*ticket, packets, nullptr);
    EXPECT_EQ(calls, 0);
}

TEST(ReadGates, a_late_delivery_does_not_reach_the_next_port_at_the_same_gate)
{
    int before = 0;
    int after = 0;
    const auto old = ReadGates::open(count, &before);
    ASSERT_TRUE(old);
    ReadGates::shut(*old);
    const auto fresh = ReadGates::open(count, &after);
    ASSERT_TRUE(fresh);

    NoPackets packets;
    ReadGates::deliver(*old, packets, nullptr);
    EXPECT_EQ(before, 0);
    EXPECT_EQ(after, 0);
    ReadGates::shut(*fresh);
}

TEST(ReadGates, shutting_an_old_ticket_again_leaves_the_next_port_open)
{
    int calls = 0;
    const auto old = ReadGates::open(count, &calls);
    ASSERT_TRUE(old);
    ReadGates::shut(*old);
    const auto fresh = ReadGates::open(count, &calls);
    ASSERT_TRUE(fresh);

    ReadGates::shut(*old);
    NoPackets packets;
    ReadGates::deliver(*fresh, packets, nullptr);
    ReadGates::shut(*fresh);
    EXPECT_EQ(calls, 1);
}

TEST(ReadGates, shutting_waits_for_the_delivery_that_is_inside)
{
    struct Delivery {
        std::promise<void> entered;
        std::atomic<bool> shutting = false;
        std::atomic<bool> left = false;
    } delivery;
    const auto ticket = ReadGates::open(
        [](MIDIPacketList&, void* refCon, void*) {
            auto* delivery = static_cast<Delivery*>(refCon);
            delivery->entered.set_value();
            while (!delivery->shutting) { }
            // Gives a shut() that does not wait enough time to return.
            for (int i = 0; i < 1000; ++i)
                std::this_thread::yield();
            delivery->left = true;
        },
        &delivery);
    ASSERT_TRUE(ticket);

    auto receiver = std::async(std::launch::async, [&] {
        NoPackets packets;
        ReadGates::deliver(*ticket, packets, nullptr);
    });
    delivery.entered.get_future().wait();
    delivery.shutting = true;
    ReadGates::shut(*ticket);
    EXPECT_TRUE(delivery.left);
    receiver.wait();
}

TEST(ReadGates, there_is_no_ticket_while_all_gates_are_open)
{
    int calls = 0;
    std::vector<ReadGates::Ticket> tickets;
    while (const auto ticket = ReadGates::open(count, &calls))
        tickets.push_back(*ticket);
    EXPECT_EQ(tickets.size(), 64U);

    ReadGates::shut(tickets.back());
    const auto again = ReadGates::open(count, &calls);
    ASSERT_TRUE(again);
    EXPECT_NE(*again, tickets.back());
    tickets.back() = *again;
    for (const auto ticket : tickets)
        ReadGates::shut(ticket);
}

} // namespace
} // namespace kestrel::test
