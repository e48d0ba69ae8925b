#include "platform/linux/midi/JackNotice.h"
#include "tests/platform/linux/midi/JackFixture.h"
#include "tests/platform/linux/midi/OwnProcess.h"

#include <functional>
#include <memory>

namespace kestrel::test {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

// Longer than any timeout here, even on a busy machine, and shorter than the silence of the server.
constexpr auto Bounded = 15s;

milliseconds duration(const std::function<void()>& work)
{
    const auto start = Clock::now();
    work();
    return std::chrono::duration_cast<milliseconds>(Clock::now() - start);
}

// A server, or a client for which it waits, that stands still.
class JackSilence : public JackFixture {
protected:
    // Waits until the services have caught up with a server that answers again.
    bool waitForCatchingUp()
    {
        const int before = loop.turns();
        return loop.runUntil([&] { return loop.turns() > before; }, Long);
    }

    // Waits until the services give a client, which takes several attempts on a busy machine.
    bool waitForClient(JackMIDIServices& of, const char* name)
    {
        return loop.runUntil(
            [&] { return take(of.createClient(name, notified, this), client); }, Long);
    }

    JackMIDIServices impatient { loop };
    // Its timeout is so long that a call has not waited for it if it took less time.
    static constexpr auto Calm = 5s;
    JackMIDIServices calm { loop, Calm };
    MIDIClient client = 0;
};

TEST_F(JackSilence, a_silent_server_holds_up_creation_only_once_and_then_not_at_all)
{
    server.stop();
    EXPECT_LT(
        duration([&] { EXPECT_FALSE(take(calm.createClient("late", notified, this), client)); }),
        Bounded);
    for (int i = 0; i < 3; ++i) {
        EXPECT_LT(duration([&] {
            EXPECT_FALSE(take(calm.createClient("late", notified, this), client));
        }),
            Calm);
    }
    server.resume();
    ASSERT_TRUE(waitForCatchingUp());
    {
        // The client that came too late is gone: its name is free.
        const JackPeer peer("late");
        EXPECT_EQ(peer.name(), "late");
    }
    EXPECT_TRUE(waitForClient(calm, "late"));
    EXPECT_TRUE(notifications.empty());
}

TEST_F(JackSilence, a_notice_says_that_jack_does_not_answer_until_it_does)
{
    JackNotice notice(impatient, std::make_unique<NoNotices>());
    EXPECT_TRUE(notice.current().empty());
    server.stop();
    EXPECT_FALSE(take(impatient.createClient("late", notified, this), client));
    const auto notices = notice.current();
    ASSERT_EQ(notices.size(), 1u);
    EXPECT_EQ(notices[0].text, "JACK does not answer");
    server.resume();
    ASSERT_TRUE(waitForCatchingUp());
    EXPECT_TRUE(notice.current().empty());
}

TEST_F(JackSilence, a_server_killed_while_a_call_waits_for_it_frees_the_way_for_the_next)
{
    server.stop();
    EXPECT_FALSE(take(impatient.createClient("late", notified, this), client));
    server.kill();
    ASSERT_TRUE(waitForCatchingUp());
    server.start();
    EXPECT_TRUE(waitForClient(impatient, "late"));
}

TEST_F(JackSilence, every_operation_returns_while_the_server_is_silent)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(5);
    MIDIPort input = 0;
    MIDIPort output = 0;
    ASSERT_TRUE(take(calm.createClient("client", notified, this), client));
    ASSERT_TRUE(take(calm.createInputPort(client, "in", read, this), input));
    ASSERT_TRUE(take(calm.createOutputPort(client, "out"), output));
    const auto devices = calm.devices();
    ASSERT_EQ(devices.size(), 1u);
    const MIDIEntity entity = devices[0].entities.at(4);
    server.stop();
    EXPECT_LT(duration([&] {
        const Bytes packet { 0x90, 0x00, 0x7F };
        EXPECT_TRUE(calm.send(output, entity.destinations[0], { 0, packet }));
    }),
        Calm);
    EXPECT_LT(duration([&] {
        EXPECT_FALSE(calm.connectSource(input, entity.sources[0].endpoint, &idArray));
    }),
        Bounded);
    EXPECT_LT(duration([&] {
        MIDIPort port = 0;
        EXPECT_FALSE(take(calm.createInputPort(client, "in 2", read, this), port));
        EXPECT_FALSE(take(calm.createOutputPort(client, "out 2"), port));
        EXPECT_TRUE(calm.devices().empty());
        calm.disposePort(output);
        calm.disposePort(input);
        calm.disposeClient(client);
        EXPECT_FALSE(take(calm.createClient("client", notified, this), client));
    }),
        Calm);
    server.resume();
    ASSERT_TRUE(waitForCatchingUp());
    EXPECT_TRUE(waitForClient(calm, "client"));
}

TEST_F(JackSilence, what_could_not_be_had_from_a_silent_server_is_announced_once_it_answers)
{
    MIDIPort port = 0;
    ASSERT_TRUE(waitForClient(impatient, "client"));
    server.stop();
    EXPECT_FALSE(take(impatient.createInputPort(client, "in", read, this), port));
    server.resume();
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications, (std::vector<std::string> { "added source" }));
    EXPECT_TRUE(loop.runUntil(
        [&] { return take(impatient.createInputPort(client, "in", read, this), port); }, Long));
}

// The server waits for a client that stands still, so it runs no cycles and connects nothing.
TEST_F(JackSilence, a_connection_that_is_not_made_in_time_is_given_up_and_announced_once_it_can_be)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(1);
    MIDIPort input = 0;
    ASSERT_TRUE(take(calm.createClient("client", notified, this), client));
    ASSERT_TRUE(take(calm.createInputPort(client, "in", read, this), input));
    const MIDIEndpoint source = calm.devices().at(0).entities.at(0).sources.at(0).endpoint;
    zenta.hold();
    EXPECT_FALSE(calm.connectSource(input, source, &idArray));
    EXPECT_FALSE(calm.devices().empty()) << "the attempt still occupies the control thread";
    zenta.release();
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications.front(), "added source");
    ASSERT_TRUE(loop.runUntil([&] { return calm.connectSource(input, source, &idArray); }, Long));
}

TEST_F(JackSilence, a_link_lives_through_two_seconds_of_silence_and_loses_nothing)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(5);
    JackPeer receiver("receiver");
    receiver.addPairs(5);
    const Link link = connect("receiver");
    ASSERT_TRUE(send(link, { 0x90, 0x00, 0x01 }));
    ASSERT_EQ(receiver.received("midi_5_in", 1, milliseconds(Long)).size(), 1u);
    server.stop();
    EXPECT_LT(duration([&] {
        ASSERT_TRUE(send(link, { 0x90, 0x00, 0x02 }));
        ASSERT_TRUE(send(link, { 0x90, 0x00, 0x03 }));
    }),
        Long);
    EXPECT_FALSE(loop.runUntil([&] { return !packets.empty(); }, 2s));
    server.resume();
    EXPECT_EQ(receiver.received("midi_5_in", 3, milliseconds(Long)),
        (std::vector<Bytes> { { 0x90, 0x00, 0x01 }, { 0x90, 0x00, 0x02 }, { 0x90, 0x00, 0x03 } }));
    zenta.send("midi_5", { { 0x90, 0x00, 0x00 } });
    ASSERT_TRUE(waitForPackets(1));
    EXPECT_TRUE(notifications.empty());
}

TEST_F(JackSilence, services_end_within_bounds_though_the_server_is_silent)
{
    const std::size_t threads = OwnProcess::threads();
    auto ending = std::make_unique<JackMIDIServices>(loop);
    ASSERT_TRUE(waitForClient(*ending, "ending"));
    server.stop();
    EXPECT_LT(duration([&] { ending.reset(); }), Bounded);
    server.resume();
    EXPECT_TRUE(OwnProcess::threadsFallTo(threads)); // the abandoned thread has closed the client
    const JackPeer peer("ending");
    EXPECT_EQ(peer.name(), "ending");
}

} // namespace
} // namespace kestrel::test
