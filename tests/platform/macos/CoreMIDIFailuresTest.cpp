#include "tests/platform/macos/CoreMIDIFixture.h"
#include "tests/platform/macos/stand-ins/Activities.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Bytes = std::vector<std::uint8_t>;

class CoreMIDIFailuresTest : public CoreMIDIFixture {
protected:
    [[nodiscard]] bool send(MIDIPort port, MIDIEndpoint to, const Bytes& data)
    {
        return services->send(port, to, { .timeStamp = 0, .data = data });
    }
};

TEST_F(CoreMIDIFailuresTest, a_client_that_is_refused_leaves_nothing_behind)
{
    const auto clients = server.clients.size();
    const int objects = CFObject::count();
    calls().failing = "MIDIClientCreate";
    EXPECT_EQ(createClient(), 0U);
    EXPECT_EQ(server.clients.size(), clients);
    EXPECT_EQ(CFObject::count(), objects);
    EXPECT_EQ(heldActivities(Activity::Kind::LatencyCritical), 0);
    calls() = {};
    EXPECT_NE(createClient(), 0U);
}

TEST_F(CoreMIDIFailuresTest, ports_that_are_refused_leave_nothing_behind)
{
    const MIDIClient client = createClient();
    const auto ports = server.ports.size();
    const int objects = CFObject::count();
    // More often than there are gates.
    for (int i = 0; i < 100; ++i) {
        calls().failing = "MIDIInputPortCreate";
        EXPECT_FALSE(services->createInputPort(client, "in", read, nullptr));
        calls().failing = "MIDIOutputPortCreate";
        EXPECT_FALSE(services->createOutputPort(client, "out"));
    }
    EXPECT_EQ(server.ports.size(), ports);
    EXPECT_EQ(CFObject::count(), objects);
    calls() = {};
    EXPECT_TRUE(services->createInputPort(client, "in", read, nullptr));
    EXPECT_TRUE(services->createOutputPort(client, "out"));
}

TEST_F(CoreMIDIFailuresTest, a_port_whose_source_is_refused_can_be_connected_later)
{
    Packets received;
    const MIDIClient client = createClient();
    const auto port = services->createInputPort(client, "in", read, &received);
    ASSERT_TRUE(port);
    calls().failing = "MIDIPortConnectSource";
    EXPECT_FALSE(services->connectSource(*port, source, &mark));
    calls() = {};
    EXPECT_FALSE(services->connectSource(*port, destination, &mark));
    play({ 0xF8 });
    receiveAll();
    EXPECT_THAT(received, IsEmpty());

    EXPECT_TRUE(services->connectSource(*port, source, &mark));
    play({ 0xF8 });
    receiveAll();
    EXPECT_THAT(received, ElementsAre(Bytes { 0x55, 0xF8 }));
}

TEST_F(CoreMIDIFailuresTest, names_that_are_not_UTF_8_are_refused)
{
    const MIDIClient client = createClient();
    EXPECT_FALSE(services->createClient("\xFF", nullptr, nullptr));
    EXPECT_FALSE(services->createInputPort(client, "\xFF", read, nullptr));
    EXPECT_FALSE(services->createOutputPort(client, "\xFF"));
}

TEST_F(CoreMIDIFailuresTest, a_client_gets_its_name)
{
    const auto client = services->createClient("inputMIDIReceiver Client é", nullptr, nullptr);
    ASSERT_TRUE(client);
    EXPECT_EQ(server.clients.at(*client).name, u"inputMIDIReceiver Client é");
}

TEST_F(CoreMIDIFailuresTest, a_packet_that_is_not_sent_is_reported)
{
    const MIDIPort port = services->createOutputPort(createClient(), "out").value_or(0);
    EXPECT_TRUE(send(port, destination, { 0x90, 0x00, 0x7F }));
    EXPECT_FALSE(send(port, source, { 0x90, 0x00, 0x7F }));
    server.removeDevice(console);
    EXPECT_FALSE(send(port, destination, { 0x90, 0x00, 0x7F }));
    ASSERT_EQ(server.sent.size(), 1U);
    EXPECT_EQ(server.sent[0].destination, destination);
    EXPECT_EQ(server.sent[0].data, (Bytes { 0x90, 0x00, 0x7F }));
}

TEST_F(CoreMIDIFailuresTest, a_list_of_every_size_up_to_the_largest_is_sent_whole)
{
    const MIDIPort port = services->createOutputPort(createClient(), "out").value_or(0);
    for (const std::size_t size : { 1UL, 2UL, 3UL, 4UL, 1007UL, 1008UL, 1009UL, 1010UL, 1011UL,
             1012UL, 1013UL, 65519UL, 65520UL, 65521UL, 65522UL }) {
        const Bytes data(size, 0x20);
        EXPECT_TRUE(send(port, destination, data)) << size;
        EXPECT_EQ(server.sent.back().data, data) << size;
    }
}

TEST_F(CoreMIDIFailuresTest, the_program_is_latency_critical_while_it_has_a_client)
{
    EXPECT_EQ(heldActivities(Activity::Kind::PunctualTimers), 1);
    const MIDIClient first = createClient();
    const MIDIClient second = createClient();
    EXPECT_EQ(heldActivities(Activity::Kind::LatencyCritical), 1);
    services->disposeClient(first);
    EXPECT_EQ(heldActivities(Activity::Kind::LatencyCritical), 1);
    services->disposeClient(second);
    EXPECT_EQ(heldActivities(Activity::Kind::LatencyCritical), 0);
    services.reset();
    EXPECT_EQ(heldActivities(Activity::Kind::PunctualTimers), 0);
}

TEST_F(CoreMIDIFailuresTest, services_that_end_dispose_of_their_clients_and_these_of_their_ports)
{
    Packets received;
    const auto ports = server.ports.size();
    createConnectedPort(createClient(), received);
    createConnectedPort(createClient(), received);
    services.reset();
    EXPECT_EQ(server.ports.size(), ports);
    play({ 0xF8 });
    receiveAll();
    EXPECT_THAT(received, IsEmpty());
}

// In a process of its own, because a process has one MIDI server and keeps one client.
TEST_F(CoreMIDIFailuresTest, a_client_to_keep_is_created_later_if_it_was_refused)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto rebuild = [this] {
        int created = 0;
        calls().before = [&created](std::string_view function) {
            created += function == "MIDIClientCreate";
            calls().failing = created == 2 ? "MIDIClientCreate" : "";
        };
        const MIDIClient first = createClient();
        const MIDIClient second = createClient();
        services->disposeClient(first);
        services->disposeClient(second);
        std::exit(first != 0 && second != 0 && created == 4 && createClient() != 0 ? 0 : 1);
    };
    EXPECT_EXIT(rebuild(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace kestrel::test
