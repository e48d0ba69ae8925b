#include "platform/linux/midi/SourceLane.h"

#include "tests/platform/linux/midi/ServerStandIn.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace kestrel::test {
namespace {

using testing::ElementsAre;

// A source whose cycles the test runs. What the main thread is told is written down in order.
class SourceLaneTest : public testing::Test {
protected:
    SourceLaneTest() { lane.bind(&m_port); }

    // One cycle that brings a packet of one byte for each number.
    void cycle(std::initializer_list<unsigned char> packets, std::uint32_t lostEvents = 0)
    {
        m_port.events.clear();
        for (const unsigned char packet : packets)
            m_port.events.push_back({ packet });
        m_port.lostEvents = lostEvents;
        wakesMainThread = lane.receive(nullptr, 64);
    }
    void deliver()
    {
        lane.deliver(&SourceLaneTest::read, this, [this] { told.emplace_back("loss"); });
    }

    SourceLane lane { "ZENTA:midi_5", nullptr };
    bool wakesMainThread = false;
    std::vector<std::string> told;
    std::function<void()> whileReading; // called once, after the next packet

private:
    static void read(MIDIPacketList& packets, void* test, void*)
    {
        auto& self = *static_cast<SourceLaneTest*>(test);
        while (const auto packet = packets.next()) {
            self.told.push_back(std::to_string(packet->data[0]));
            if (const auto act = std::exchange(self.whileReading, {}))
                act();
        }
    }

    _jack_port m_port;
};

TEST_F(SourceLaneTest, a_loss_is_told_between_the_packets_before_and_after_it)
{
    cycle({ 1, 2 });
    lane.markLoss();
    cycle({ 3 });
    deliver();
    EXPECT_THAT(told, ElementsAre("1", "2", "loss", "3"));
}

TEST_F(SourceLaneTest, losses_without_a_packet_between_them_are_told_as_one)
{
    lane.markLoss();
    lane.markLoss();
    cycle({ 1 });
    deliver();
    EXPECT_THAT(told, ElementsAre("loss", "1"));
}

TEST_F(SourceLaneTest, a_loss_that_was_told_is_not_told_again_with_the_packet_that_counts_it)
{
    lane.markLoss();
    deliver();
    cycle({ 1 });
    deliver();
    cycle({ 2 });
    deliver();
    EXPECT_THAT(told, ElementsAre("loss", "1", "2"));
}

TEST_F(SourceLaneTest, a_loss_that_a_nested_delivery_has_told_is_not_told_again)
{
    cycle({ 1 });
    whileReading = [this] {
        lane.markLoss();
        cycle({ 2 });
        deliver();
    };
    deliver();
    deliver();
    EXPECT_THAT(told, ElementsAre("1", "loss", "2"));
}

TEST_F(SourceLaneTest, a_buffer_that_was_full_is_a_loss_and_wakes_the_main_thread)
{
    cycle({}, 1);
    EXPECT_TRUE(wakesMainThread);
    deliver();
    EXPECT_THAT(told, ElementsAre("loss"));
    cycle({});
    EXPECT_FALSE(wakesMainThread);
}

TEST_F(SourceLaneTest, nothing_is_told_once_it_is_closed)
{
    cycle({ 1, 2, 3 });
    lane.markLoss();
    whileReading = [this] { lane.close(); };
    deliver();
    EXPECT_THAT(told, ElementsAre("1"));
}

} // namespace
} // namespace kestrel::test
