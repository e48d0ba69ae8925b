#include "platform/linux/midi/Pace.h"
#include "platform/linux/midi/PortChanges.h"
#include "tests/platform/linux/midi/JackFixture.h"

namespace kestrel::test {
namespace {

class JackNotifications : public JackFixture {
public:
    void SetUp() override { ASSERT_TRUE(create(client)); }

    MIDIClient client = 0;
};

using Texts = std::vector<std::string>;

TEST_F(JackNotifications, an_output_of_another_client_is_a_source_that_comes_and_goes)
{
    JackPeer zenta("ZENTA");
    zenta.addOutput("midi_1");
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications, (Texts { "added source" }));
    ASSERT_TRUE(device("ZENTA"));
    zenta.remove("midi_1");
    ASSERT_TRUE(waitForNotifications(2));
    EXPECT_EQ(notifications, (Texts { "added source", "removed source" }));
    EXPECT_FALSE(device("ZENTA"));
}

TEST_F(JackNotifications, an_input_of_another_client_is_a_destination_that_comes_and_goes)
{
    JackPeer zenta("ZENTA");
    zenta.addInput("midi_1_in");
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications, (Texts { "added destination" }));
    zenta.remove("midi_1_in");
    ASSERT_TRUE(waitForNotifications(2));
    EXPECT_EQ(notifications, (Texts { "added destination", "removed destination" }));
}

TEST_F(JackNotifications, ports_that_were_there_before_the_client_are_reported_when_they_go)
{
    services.disposeClient(client);
    JackPeer zenta("ZENTA");
    zenta.addPairs(1);
    ASSERT_TRUE(create(client));
    zenta.remove("midi_1");
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications, (Texts { "removed source" }));
}

TEST_F(JackNotifications, a_port_that_passes_by_in_the_pause_after_a_change_hides_no_later_one)
{
    JackPeer other("Other");
    for (const std::size_t told : { 1u, 2u, 3u }) { // the pause is longer each time
        other.addOutput("stays_" + std::to_string(told));
        ASSERT_TRUE(waitForNotifications(told));
    }
    other.addOutput("passing");
    other.remove("passing");
    loop.runFor(std::chrono::milliseconds(20));
    JackPeer zenta("ZENTA");
    zenta.addOutput("midi_1");
    EXPECT_TRUE(waitForNotifications(4));
}

TEST_F(JackNotifications, audio_ports_and_our_own_ports_are_not_reported)
{
    JackPeer zenta("ZENTA");
    MIDIPort port = 0;
    zenta.addAudioOutput("left");
    ASSERT_TRUE(take(services.createInputPort(client, "in", read, this), port));
    ASSERT_TRUE(take(services.createOutputPort(client, "out"), port));
    zenta.addInput("last");
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications, (Texts { "added destination" }));
}

TEST_F(JackNotifications, a_device_can_be_connected_once_the_last_of_its_ports_is_reported)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(5);
    MIDIPort input = 0;
    ASSERT_TRUE(take(services.createInputPort(client, "in", read, this), input));
    std::size_t seen = 0;
    bool connected = false;
    ASSERT_TRUE(loop.runUntil(
        [&] {
            for (; seen < notifications.size(); ++seen) {
                const auto found = device("ZENTA");
                if (notifications[seen] == "added source" && found && found->entities.size() == 5)
                    connected = services.connectSource(
                        input, found->entities[4].sources.at(0).endpoint, &idArray);
            }
            return connected;
        },
        Long));
}

// Before a client is active, its ports are visible but cannot be connected.
TEST_F(JackNotifications, ports_are_reported_when_their_client_becomes_active)
{
    services.disposeClient(client);
    JackPeer zenta("ZENTA", JackPeer::Start::Inactive);
    zenta.addOutput("midi_1");
    ASSERT_TRUE(create(client));
    ASSERT_TRUE(device("ZENTA"));
    zenta.activate();
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications, (Texts { "added source" }));
    MIDIPort input = 0;
    ASSERT_TRUE(take(services.createInputPort(client, "in", read, this), input));
    EXPECT_TRUE(services.connectSource(
        input, device("ZENTA")->entities.at(0).sources.at(0).endpoint, &idArray));
}

TEST_F(JackNotifications, a_connected_port_that_went_and_returned_unseen_is_reported_once)
{
    services.disposeClient(client);
    JackPeer zenta("ZENTA");
    zenta.addPairs(1);
    connect();
    zenta.remove("midi_1"); // the main loop does not run meanwhile
    zenta.addOutput("midi_1");
    ASSERT_TRUE(waitForNotifications(1));
    loop.runFor(4 * PortChanges::Settling);
    EXPECT_EQ(notifications, (Texts { "removed source" }));
}

TEST_F(JackNotifications, sources_that_come_and_go_in_one_burst_are_one_change)
{
    JackPeer first("first");
    first.addOutput("out");
    ASSERT_TRUE(waitForNotifications(1));
    JackPeer second("second");
    second.addOutput("out");
    first.remove("out");
    ASSERT_TRUE(waitForNotifications(2));
    loop.runFor(4 * PortChanges::Settling);
    EXPECT_EQ(notifications, (Texts { "added source", "removed source" }));
}

// The link is built anew for other clients' sake less and less often, but not for the console's.
TEST_F(JackNotifications, other_clients_that_come_and_go_do_not_hold_up_the_return_of_a_source)
{
    services.disposeClient(client);
    auto zenta = std::make_unique<JackPeer>("ZENTA");
    zenta->addPairs(5);
    services.disposeClient(connect().client);
    ASSERT_TRUE(create(client));
    JackPeer other("other");
    for (const std::size_t told : { 1u, 2u, 3u, 4u, 5u }) {
        other.addOutput("stays_" + std::to_string(told));
        ASSERT_TRUE(waitForNotifications(told));
    }
    // Others would have to wait until this time.
    const auto held = PollMainLoop::Clock::now() + Pace::LongestPause;
    notifications.clear();
    zenta.reset();
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications.front(), "removed source");
    notifications.clear();
    zenta = std::make_unique<JackPeer>("ZENTA");
    zenta->addPairs(5);
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications.front(), "added source");
    EXPECT_LT(PollMainLoop::Clock::now(), held);
}

// Where a busy machine spreads the news of them over more time than ports have to settle, there are
// more changes, which shows nothing.
TEST_F(JackNotifications, ports_that_come_together_are_one_change_of_each_kind)
{
    std::vector<std::unique_ptr<JackPeer>> consoles;
    for (int round = 0; round < 5; ++round) {
        consoles.push_back(std::make_unique<JackPeer>(
            "ZENTA " + std::to_string(round), JackPeer::Start::Inactive));
        consoles.back()->addPairs(5);
        consoles.back()->activate();
        ASSERT_TRUE(waitForNotifications(2));
        loop.runFor(4 * PortChanges::Settling);
        if (notifications == Texts { "added source", "added destination" })
            return;
        notifications.clear();
    }
    FAIL() << "each port was told by itself";
}

// A machine that stands still for a moment makes it stay for once, which shows nothing.
TEST_F(JackNotifications, a_port_that_comes_and_goes_all_the_time_is_not_reported)
{
    JackPeer flapping("flapping");
    for (int round = 0; round < 5; ++round) {
        notifications.clear();
        for (int i = 0; i < 20; ++i) {
            flapping.addOutput("out");
            loop.runFor(50ms);
            flapping.remove("out");
            loop.runFor(50ms);
        }
        loop.runFor(4 * PortChanges::Settling);
        if (notifications.empty())
            return;
    }
    FAIL() << "it was told each time";
}

TEST_F(JackNotifications,
    two_hundred_clients_that_come_and_go_are_not_reported_and_hide_none_that_stays)
{
    for (int i = 0; i < 200; ++i) {
        JackPeer passing("passing " + std::to_string(i));
        passing.addPairs(1);
        loop.runFor(10ms);
    }
    EXPECT_LE(notifications.size(), 4u); // none, but for a moment in which the machine stood still
    notifications.clear();
    JackPeer zenta("ZENTA");
    zenta.addPairs(5);
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_TRUE(device("ZENTA"));
}

TEST_F(JackNotifications, a_port_that_comes_and_goes_slowly_is_reported_less_and_less_often)
{
    JackPeer flapping("flapping");
    constexpr auto Stays = PortChanges::Settling + 50ms;
    for (int i = 0; i < 8; ++i) {
        flapping.addOutput("out");
        loop.runFor(Stays);
        flapping.remove("out");
        loop.runFor(Stays);
    }
    EXPECT_GE(notifications.size(), 2u);
    EXPECT_LE(notifications.size(), 8u);
}

// Two programs of our own kind would make news for each other without end.
TEST_F(JackNotifications, clients_of_our_own_kind_are_neither_reported_nor_listed)
{
    JackPeer twin("inputMIDIReceiver Client");
    ASSERT_NE(twin.name(), "inputMIDIReceiver Client") << "JACK numbers the second one";
    twin.addPairs(1);
    JackPeer zenta("ZENTA");
    zenta.addInput("last");
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications, (Texts { "added destination" }));
    EXPECT_EQ(services.devices().size(), 1u);
    EXPECT_TRUE(device("ZENTA"));
}

TEST_F(JackNotifications, a_second_console_of_the_same_name_is_another_device)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(5);
    services.disposeClient(client);
    connect();
    {
        JackPeer second("ZENTA");
        second.addPairs(5);
        ASSERT_TRUE(waitForNotifications(2));
        EXPECT_NE(second.name(), "ZENTA");
        EXPECT_EQ(device("ZENTA")->entities.size(), 5u);
        EXPECT_TRUE(device(second.name()));
    }
    ASSERT_TRUE(waitForNotifications(4));
    EXPECT_LE(losses, zenta.lateCycles());
    zenta.send("midi_5", { { 0x90, 0x00, 0x00 } });
    ASSERT_TRUE(waitForPackets(1));
}

TEST_F(JackNotifications, a_renamed_port_is_a_change_of_the_sources)
{
    JackPeer zenta("ZENTA");
    zenta.addOutput("midi_1");
    ASSERT_TRUE(waitForNotifications(1));
    zenta.rename("midi_1", "other");
    ASSERT_TRUE(waitForNotifications(2));
    loop.runFor(4 * PortChanges::Settling);
    EXPECT_EQ(notifications, (Texts { "added source", "removed source" }));
}

TEST_F(JackNotifications, none_come_once_the_client_is_disposed_of)
{
    JackPeer zenta("ZENTA");
    zenta.addOutput("midi_1");
    ASSERT_FALSE(services.devices().empty());
    services.disposeClient(client);
    ASSERT_TRUE(create(client));
    zenta.addInput("midi_1_in");
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications, (Texts { "added destination" }));
}

TEST_F(JackNotifications, the_callback_may_dispose_of_the_client)
{
    services.disposeClient(client);
    struct Closing {
        JackNotifications* test;
        int calls;
    } closing { this, 0 };
    const auto close = [](const MIDINotification&, void* refCon) {
        auto* self = static_cast<Closing*>(refCon);
        ++self->calls;
        self->test->services.disposeClient(self->test->client);
    };
    ASSERT_TRUE(take(services.createClient("closing", close, &closing), client));
    JackPeer zenta("ZENTA");
    zenta.addOutput("midi_1");
    zenta.addInput("midi_1_in");
    ASSERT_TRUE(loop.runUntil([&] { return closing.calls > 0; }, Long));
    EXPECT_EQ(closing.calls, 1);
    EXPECT_TRUE(services.devices().empty());
}

} // namespace
} // namespace kestrel::test
