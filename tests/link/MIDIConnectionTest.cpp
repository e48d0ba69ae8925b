#include "link/MIDIConnection.h"

#include "tests/fakes/FakeMIDIServices.h"
#include "tests/fakes/FakeSystem.h"
#include "tests/fakes/Recorders.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ManualMainLoop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

// A connection on MIDI services in memory, with one console and a running workstation.
class LinkBench {
public:
    LinkBench()
    {
        services.deviceList = { device(1, "ZENTA", 5) };
        processes.names = { "launchd", "Pro Tools" };
        connection.setStatusItem(&statusItem);
        connection.setMyWindowController(&display);
        connection.setListener(&listener);
    }

    void tick() { connection.checkActiveSence(); }

    void goOnline()
    {
        connection.reconnectAllSources();
        connection.answerHeartbeat();
        services.calls.clear();
        statusItem.images.clear();
    }

    FakeMIDIServices services;
    FakeProcessTable processes;
    ManualMainLoop mainLoop;
    ManualClock clock;
    RecordingStatusItem statusItem;
    RecordingDisplay display;
    RecordingLinkListener listener;
    std::vector<std::string> received;
    std::vector<std::int32_t> sourceIDs;
    std::vector<std::uint32_t> lengths;
    MIDIConnection connection { { services, processes, mainLoop, clock },
        [this](const MIDIMessage& message) {
            received.push_back(hex(message.readData()));
            sourceIDs.push_back(message.sourceID());
            lengths.push_back(message.length());
        } };
};

TEST(MIDIConnection, opens_client_and_ports_by_name_and_connects_the_fifth_entity)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    EXPECT_THAT(bench.services.calls,
        ElementsAre("create client inputMIDIReceiver Client",
            "create output port OutputMIDIReceiver Output Port",
            "create input port inputMIDIReceiver Input Port", "connect 141"));
    EXPECT_EQ(bench.connection.client(), 1u);
    EXPECT_EQ(bench.connection.inputEndPointRef(), 141u);
}

TEST(MIDIConnection, takes_down_the_old_link_before_it_builds_a_new_one)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    bench.services.calls.clear();
    bench.connection.reconnectAllSources();
    EXPECT_THAT(bench.services.calls,
        ElementsAre("dispose port 2", "dispose port 3", "dispose client 1",
            "create client inputMIDIReceiver Client",
            "create output port OutputMIDIReceiver Output Port",
            "create input port inputMIDIReceiver Input Port", "connect 141"));
    EXPECT_EQ(bench.connection.client(), 4u);
}

TEST(MIDIConnection, a_model_that_only_contains_the_name_or_differs_in_case_is_skipped)
{
    LinkBench bench;
    bench.services.deviceList = { device(1, "ZENTA 2", 5), device(2, "zenta", 5),
        device(3, "My ZENTA", 5), device(4, "ZENTA", 5) };
    bench.connection.reconnectAllSources();
    EXPECT_EQ(bench.services.calls.back(), "connect 441");
}

TEST(MIDIConnection, a_console_with_four_entities_is_skipped)
{
    LinkBench bench;
    bench.services.deviceList = { device(1, "ZENTA", 4) };
    bench.connection.reconnectAllSources();
    EXPECT_EQ(bench.services.calls.back(), "create input port inputMIDIReceiver Input Port");
    EXPECT_NE(bench.connection.client(), 0u);
}

TEST(MIDIConnection, knows_how_many_pairs_the_console_had_when_the_link_was_built)
{
    LinkBench bench;
    EXPECT_EQ(bench.connection.consolePairs(), 0u);
    bench.services.deviceList = { device(1, "system", 7), device(2, "ZENTA", 4) };
    bench.connection.reconnectAllSources();
    EXPECT_EQ(bench.connection.consolePairs(), 4u);
    bench.services.deviceList.push_back(device(3, "ZENTA", 5));
    bench.connection.reconnectAllSources();
    EXPECT_EQ(bench.connection.consolePairs(), 5u);
    bench.services.deviceList.clear();
    bench.connection.reconnectAllSources();
    EXPECT_EQ(bench.connection.consolePairs(), 0u);
}

TEST(MIDIConnection, without_any_device_the_link_is_open_and_nothing_is_connected)
{
    LinkBench bench;
    bench.services.deviceList.clear();
    bench.connection.reconnectAllSources();
    EXPECT_EQ(bench.services.calls.back(), "create input port inputMIDIReceiver Input Port");
    EXPECT_EQ(bench.connection.client(), 1u);
    EXPECT_FALSE(bench.connection.imageOnline());
}

TEST(MIDIConnection, of_more_entities_and_endpoints_the_fifth_and_the_first_of_each_are_taken)
{
    LinkBench bench;
    bench.services.deviceList = { device(1, "ZENTA", 6) };
    MIDIEntity& fifth = bench.services.deviceList[0].entities[4];
    fifth.sources.push_back({ 991, 5 });
    fifth.destinations.push_back(992);
    bench.goOnline();
    bench.services.deliver({ { 0xB0, 0x18, 0x05 } });
    EXPECT_THAT(bench.sourceIDs, ElementsAre(-104));
    EXPECT_EQ(bench.services.sent.at(0).destination, 142u);
}

TEST(MIDIConnection, a_device_whose_model_cannot_be_read_is_skipped)
{
    LinkBench bench;
    bench.services.deviceList = { device(1, "ZENTA", 5), device(2, "ZENTA", 5) };
    bench.services.deviceList[0].model.reset();
    bench.connection.reconnectAllSources();
    EXPECT_EQ(bench.services.calls.back(), "connect 241");
}

TEST(MIDIConnection, of_two_consoles_the_first_whose_source_connects_wins)
{
    LinkBench bench;
    bench.services.deviceList = { device(1, "ZENTA", 5), device(2, "ZENTA", 5) };
    bench.goOnline();
    EXPECT_EQ(bench.services.sent.at(0).destination, 142u);

    bench.services.failing = { "connect 141" };
    bench.connection.reconnectAllSources();
    EXPECT_EQ(bench.services.calls.back(), "connect 241");
    bench.connection.answerHeartbeat();
    EXPECT_EQ(bench.services.sent.at(1).destination, 242u);
}

TEST(MIDIConnection, an_unreadable_unique_id_leads_on_to_the_next_console)
{
    LinkBench bench;
    bench.services.deviceList = { device(1, "ZENTA", 5), device(2, "ZENTA", 5) };
    bench.services.deviceList[0].entities[4].sources[0].uniqueID.reset();
    bench.connection.reconnectAllSources();
    EXPECT_THAT(bench.services.calls, testing::Not(testing::Contains("connect 141")));
    EXPECT_EQ(bench.services.calls.back(), "connect 241");
}

TEST(MIDIConnection, a_console_that_cannot_be_connected_still_gives_its_destination)
{
    LinkBench bench;
    bench.services.failing = { "connect 141" };
    bench.connection.reconnectAllSources();
    bench.connection.answerHeartbeat();
    EXPECT_EQ(bench.services.sent.at(0).destination, 142u);
}

TEST(MIDIConnection, a_fifth_entity_without_endpoints_leads_on_to_the_next_console)
{
    LinkBench bench;
    bench.services.deviceList = { device(1, "ZENTA", 5), device(2, "ZENTA", 5) };
    bench.services.deviceList[0].entities[4] = {};
    bench.goOnline();
    EXPECT_EQ(bench.services.sent.at(0).destination, 242u);
}

TEST(MIDIConnection, a_console_without_a_source_still_gives_its_destination)
{
    LinkBench bench;
    bench.services.deviceList[0].entities[4].sources.clear();
    bench.goOnline();
    EXPECT_EQ(bench.services.sent.at(0).destination, 142u);
}

TEST(MIDIConnection, a_console_without_a_destination_is_connected_and_leaves_the_old_one)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    bench.services.deviceList = { device(2, "ZENTA", 5) };
    bench.services.deviceList[0].entities[4].destinations.clear();
    bench.connection.reconnectAllSources();
    EXPECT_EQ(bench.services.calls.back(), "connect 241");
    bench.connection.answerHeartbeat();
    EXPECT_EQ(bench.services.sent.at(0).destination, 142u);
}

TEST(MIDIConnection, packets_carry_the_unique_id_of_the_source_that_connected)
{
    LinkBench bench;
    bench.services.deviceList = { device(1, "ZENTA", 5), device(2, "ZENTA", 5) };
    bench.services.failing = { "connect 141" };
    bench.connection.reconnectAllSources();
    bench.services.deliver({ { 0xB0, 0x18, 0x05 } });
    EXPECT_THAT(bench.sourceIDs, ElementsAre(-204));
}

TEST(MIDIConnection, a_client_that_cannot_be_made_is_tried_again_at_the_next_tick)
{
    LinkBench bench;
    bench.services.failing = { "create client" };
    bench.tick(); // arms the clock
    bench.tick();
    EXPECT_EQ(bench.connection.client(), 0u);
    EXPECT_THAT(bench.services.calls, ElementsAre("create client inputMIDIReceiver Client"));

    bench.services.failing.clear();
    bench.tick();
    EXPECT_EQ(bench.services.calls.back(), "connect 141");
}

TEST(MIDIConnection, a_rebuild_that_cannot_make_a_client_leaves_the_link_to_the_next_tick)
{
    LinkBench bench;
    bench.goOnline();
    bench.services.failing = { "create client" };
    bench.services.notify(MIDINotification::ObjectRemoved, MIDINotification::Source);
    bench.mainLoop.turn();
    EXPECT_EQ(bench.connection.client(), 0u);
    EXPECT_EQ(bench.connection.inputEndPointRef(), 0u);

    bench.services.failing.clear();
    bench.tick();
    EXPECT_EQ(bench.services.calls.back(), "connect 141");
}

TEST(MIDIConnection, an_input_port_that_cannot_be_made_leaves_a_client_that_ticks_do_not_touch)
{
    LinkBench bench;
    bench.services.failing = { "create input port" };
    bench.tick();
    bench.tick();
    EXPECT_NE(bench.connection.client(), 0u);
    const auto callCount = bench.services.calls.size();
    bench.services.failing.clear();
    bench.tick();
    EXPECT_EQ(bench.services.calls.size(), callCount);

    bench.services.notify(MIDINotification::ObjectAdded, MIDINotification::Source);
    bench.mainLoop.turn();
    EXPECT_EQ(bench.services.calls.back(), "connect 141");
}

TEST(MIDIConnection, without_an_output_port_the_source_connects_and_no_destination_is_taken)
{
    LinkBench bench;
    bench.services.failing = { "create output port" };
    bench.connection.reconnectAllSources();
    EXPECT_EQ(bench.services.calls.back(), "connect 141");
    bench.connection.answerHeartbeat();
    EXPECT_EQ(bench.services.sent.at(0).destination, 0u);
}

TEST(MIDIConnection, release_disposes_of_ports_and_client_and_keeps_the_destination)
{
    LinkBench bench;
    bench.goOnline();
    bench.connection.releaseMIDIReceiver();
    EXPECT_THAT(
        bench.services.calls, ElementsAre("dispose port 2", "dispose port 3", "dispose client 1"));
    EXPECT_EQ(bench.connection.client(), 0u);
    EXPECT_EQ(bench.connection.inputEndPointRef(), 0u);
    bench.connection.answerHeartbeat();
    EXPECT_EQ(bench.services.sent.back().port, 0u);
    EXPECT_EQ(bench.services.sent.back().destination, 142u);
}

TEST(MIDIConnection, a_port_that_was_disposed_of_is_not_disposed_of_again)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    bench.services.failing = { "create input port", "create output port" };
    bench.connection.reconnectAllSources();
    bench.services.calls.clear();
    bench.connection.releaseMIDIReceiver();
    EXPECT_THAT(
        bench.services.calls, ElementsAre("dispose port 0", "dispose port 0", "dispose client 4"));
}

TEST(MIDIConnection, three_packets_become_three_messages_in_order_from_the_same_source)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    bench.services.deliver({ { 0x90, 0, 0 }, { 0xB0, 0x0F, 0x40 }, { 0xB0, 0x2F, 0x45 } });
    EXPECT_THAT(bench.received, ElementsAre("90 00 00", "B0 0F 40", "B0 2F 45"));
    EXPECT_THAT(bench.sourceIDs, ElementsAre(-104, -104, -104));
}

TEST(MIDIConnection, a_link_that_was_taken_down_hears_of_nothing)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    bench.connection.releaseMIDIReceiver();
    bench.services.calls.clear();
    bench.services.deliver({ { 0xB0, 0x18, 0x05 } });
    bench.services.notify(MIDINotification::ObjectAdded, MIDINotification::Source);
    bench.mainLoop.turn();
    EXPECT_THAT(bench.received, IsEmpty());
    EXPECT_THAT(bench.services.calls, IsEmpty());
}

TEST(MIDIConnection, a_running_status_packet_is_one_message_of_five_bytes)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    bench.services.deliver({ { 0xB0, 0x0C, 0x1C, 0x2C, 0x41 } });
    EXPECT_THAT(bench.received, ElementsAre("B0 0C 1C 2C 41"));
    EXPECT_THAT(bench.lengths, ElementsAre(5u));
}

TEST(MIDIConnection, packets_of_no_bytes_and_of_64_KiB_pass_whole)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    bench.services.deliver({ {}, Bytes(65536, 0x55) });
    EXPECT_THAT(bench.lengths, ElementsAre(0u, 65536u));
    EXPECT_EQ(bench.received[0], "");
    EXPECT_EQ(bench.received[1].size(), 65536u * 3 - 1);
}

TEST(MIDIConnection, a_source_added_or_removed_rebuilds_the_link_later_on_the_main_thread)
{
    for (const auto id : { MIDINotification::ObjectAdded, MIDINotification::ObjectRemoved }) {
        LinkBench bench;
        bench.goOnline();
        bench.services.notify(id, MIDINotification::Source);
        EXPECT_THAT(bench.services.calls, IsEmpty());
        EXPECT_EQ(bench.mainLoop.turn(), 2) << "the log line, then the rebuild";
        EXPECT_EQ(bench.services.calls.front(), "dispose port 2");
        EXPECT_EQ(bench.services.calls.back(), "connect 141");
    }
}

TEST(MIDIConnection, every_other_notification_leaves_the_link_alone)
{
    LinkBench bench;
    bench.goOnline();
    bench.services.notify(MIDINotification::ObjectAdded, MIDINotification::Destination);
    bench.services.notify(MIDINotification::ObjectRemoved, MIDINotification::Destination);
    bench.services.notify(MIDINotification::ObjectAdded, MIDINotification::Device);
    bench.services.notify(MIDINotification::ObjectRemoved, MIDINotification::Entity);
    bench.services.notify(MIDINotification::ObjectAdded, MIDINotification::Other);
    bench.services.notify(MIDINotification::SetupChanged, MIDINotification::Source);
    bench.services.notify(4, MIDINotification::Source);
    EXPECT_EQ(bench.mainLoop.turn(), 0);
    EXPECT_THAT(bench.services.calls, IsEmpty());
}

TEST(MIDIConnection, each_heartbeat_is_answered_and_the_first_shows_online)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    bench.connection.answerHeartbeat();
    bench.connection.answerHeartbeat();
    ASSERT_EQ(bench.services.sent.size(), 2u);
    for (const auto& sent : bench.services.sent) {
        EXPECT_EQ(sent.port, 2u);
        EXPECT_EQ(sent.destination, 142u);
        EXPECT_EQ(sent.timeStamp, 0u);
        EXPECT_EQ(sent.data, (Bytes { 0x90, 0x00, 0x7F }));
    }
    EXPECT_THAT(bench.statusItem.images, ElementsAre("kestrel_online_16x16"));
    EXPECT_TRUE(bench.connection.imageOnline());
}

TEST(MIDIConnection, an_answer_that_cannot_be_sent_changes_nothing_else)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    bench.services.failing = { "send" };
    bench.connection.answerHeartbeat();
    EXPECT_TRUE(bench.connection.imageOnline());
}

TEST(MIDIConnection, the_first_tick_only_arms_the_clock)
{
    LinkBench bench;
    bench.tick();
    EXPECT_THAT(bench.services.calls, IsEmpty());
    bench.tick();
    EXPECT_EQ(bench.services.calls.back(), "connect 141");
}

TEST(MIDIConnection, a_heartbeat_arms_the_clock_as_the_first_tick_does)
{
    LinkBench bench;
    bench.connection.answerHeartbeat();
    bench.tick();
    EXPECT_EQ(bench.services.calls.back(), "connect 141") << "the first tick does its work";
    EXPECT_TRUE(bench.connection.imageOnline());
    bench.clock.advance(5s + 1ns);
    bench.tick();
    EXPECT_FALSE(bench.connection.imageOnline());
}

TEST(MIDIConnection, every_heartbeat_counts_anew)
{
    LinkBench bench;
    bench.goOnline();
    bench.clock.advance(4s);
    bench.connection.answerHeartbeat();
    bench.clock.advance(4s);
    bench.tick();
    EXPECT_TRUE(bench.connection.imageOnline());
}

TEST(MIDIConnection, a_link_that_was_never_online_does_not_turn_offline)
{
    LinkBench bench;
    bench.tick();
    bench.clock.advance(1h);
    bench.tick();
    bench.processes.names.clear();
    bench.tick();
    EXPECT_THAT(bench.statusItem.images, IsEmpty());
    EXPECT_THAT(bench.display.calls, IsEmpty());
}

TEST(MIDIConnection, the_tick_that_turns_offline_opens_a_link_that_is_closed)
{
    LinkBench bench;
    bench.goOnline();
    bench.connection.releaseMIDIReceiver();
    bench.services.calls.clear();
    bench.clock.advance(6s);
    bench.tick();
    EXPECT_THAT(bench.statusItem.images, ElementsAre("kestrel_offline_16x16"));
    EXPECT_EQ(bench.services.calls.back(), "connect 141");
}

TEST(MIDIConnection, a_source_that_no_longer_answers_is_looked_for_again_once_offline)
{
    LinkBench bench;
    bench.goOnline();
    bench.services.failing = { "answer" };
    bench.clock.advance(5s);
    bench.tick();
    EXPECT_THAT(bench.services.calls, IsEmpty()); // still online
    bench.clock.advance(1s);
    bench.processes.names.clear();
    bench.tick();
    EXPECT_THAT(bench.services.calls, IsEmpty()); // the workstation does not run
    bench.processes.names = { "Pro Tools" };
    bench.tick();
    EXPECT_THAT(bench.services.calls,
        ElementsAre("dispose port 2", "dispose port 3", "dispose client 1",
            "create client inputMIDIReceiver Client",
            "create output port OutputMIDIReceiver Output Port",
            "create input port inputMIDIReceiver Input Port", "connect 141"));
}

TEST(MIDIConnection, a_silent_source_that_still_answers_is_left_alone)
{
    LinkBench bench;
    bench.goOnline();
    bench.clock.advance(6s);
    bench.tick();
    bench.tick();
    EXPECT_FALSE(bench.connection.imageOnline());
    EXPECT_THAT(bench.services.calls, IsEmpty());
}

TEST(MIDIConnection, the_link_stays_closed_while_the_workstation_does_not_run)
{
    LinkBench bench;
    bench.processes.names = { "launchd", "Pro Tools Helper", "pro tools" };
    bench.tick();
    bench.tick();
    EXPECT_EQ(bench.connection.client(), 0u);
    EXPECT_THAT(bench.services.calls, IsEmpty());
}

TEST(MIDIConnection, exactly_five_seconds_of_silence_keep_the_link_online)
{
    LinkBench bench;
    bench.goOnline();
    bench.clock.advance(5s);
    bench.tick();
    EXPECT_TRUE(bench.connection.imageOnline());
    EXPECT_THAT(bench.statusItem.images, IsEmpty());

    bench.clock.advance(1ns);
    bench.tick();
    EXPECT_FALSE(bench.connection.imageOnline());
    EXPECT_THAT(bench.statusItem.images, ElementsAre("kestrel_offline_16x16"));
    EXPECT_NE(bench.connection.client(), 0u) << "marked offline, not closed";
}

TEST(MIDIConnection, the_workstation_quitting_turns_offline_though_the_heartbeat_is_fresh)
{
    LinkBench bench;
    bench.goOnline();
    bench.processes.names.clear();
    bench.tick();
    EXPECT_THAT(bench.statusItem.images, ElementsAre("kestrel_offline_16x16"));
    EXPECT_EQ(bench.display.calls.size(), 22u);
    EXPECT_THAT(bench.services.calls, IsEmpty());
}

TEST(MIDIConnection, going_offline_clears_the_panel_once)
{
    LinkBench bench;
    bench.goOnline();
    bench.clock.advance(6s);
    bench.tick();
    bench.tick();
    EXPECT_EQ(bench.display.calls.size(), 22u);
    EXPECT_EQ(bench.statusItem.images.size(), 1u);

    bench.connection.answerHeartbeat();
    EXPECT_EQ(bench.statusItem.images.back(), "kestrel_online_16x16");
}

TEST(MIDIConnection, the_offline_messages_blank_ten_zones_eight_lamps_and_four_knobs)
{
    LinkBench bench;
    bench.connection.sendOffLineMessage();
    std::vector<std::string> expected;
    for (const char* zone : { "00", "01", "02", "03", "04", "05", "06", "07", "08", "09" })
        expected.push_back(
            std::string("LCD F0 00 00 66 05 00 12 ") + zone + " 20 20 20 20 20 20 20 20 20 20 F7");
    for (const char* port : { "00", "01", "02", "03", "04", "05", "06", "07" })
        expected.push_back(std::string("DSP B0 0C 1C 2C ") + port);
    for (const char* knob : { "08", "09", "0A", "0B" })
        expected.push_back(std::string("DSP B0 ") + knob + " 00");
    EXPECT_EQ(bench.display.calls, expected);
    EXPECT_FALSE(bench.display.cameFromSource);
    EXPECT_THAT(bench.services.sent, IsEmpty()) << "nothing goes to the console";
}

TEST(MIDIConnection, what_the_console_has_pressed_is_let_go_when_the_link_is_lost)
{
    LinkBench bench;
    int lost = 0;
    bench.connection.setReleasesLost([&lost] { ++lost; });
    bench.goOnline();
    EXPECT_EQ(lost, 0);
    bench.clock.advance(6s);
    bench.tick();
    EXPECT_EQ(lost, 1) << "offline";
    bench.tick();
    EXPECT_EQ(lost, 1);
    bench.services.notify(MIDINotification::ObjectRemoved, MIDINotification::Source);
    bench.mainLoop.turn();
    EXPECT_EQ(lost, 2) << "taken down to be built anew";
}

TEST(MIDIConnection, what_the_console_has_pressed_is_let_go_when_packets_are_lost)
{
    LinkBench bench;
    int lost = 0;
    bench.connection.setReleasesLost([&lost] { ++lost; });
    bench.goOnline();
    bench.services.packetsLost();
    EXPECT_EQ(lost, 1);
    EXPECT_THAT(bench.services.calls, IsEmpty()) << "the link stays as it is";
    EXPECT_TRUE(bench.connection.imageOnline());
}

TEST(MIDIConnection, services_that_outlive_the_connection_tell_it_of_no_loss)
{
    FakeMIDIServices services;
    FakeProcessTable processes;
    ManualMainLoop mainLoop;
    ManualClock clock;
    {
        const MIDIConnection connection(
            { services, processes, mainLoop, clock }, [](const MIDIMessage&) {});
        EXPECT_TRUE(services.packetsLost);
    }
    EXPECT_FALSE(services.packetsLost);
}

TEST(MIDIConnection, no_workstation_is_seen_in_an_unreadable_process_table)
{
    LinkBench bench;
    EXPECT_TRUE(bench.connection.isProTools());
    bench.processes.unreadable = true;
    EXPECT_FALSE(bench.connection.isProTools());
}

TEST(MIDIConnection, the_listener_learns_which_port_was_opened_and_why_the_link_is_built_anew)
{
    LinkBench bench;
    bench.connection.reconnectAllSources();
    EXPECT_THAT(bench.listener.events, ElementsAre(LinkEvent::Opened));
    EXPECT_THAT(bench.listener.details, ElementsAre("ZENTA, port 5"));

    bench.services.notify(MIDINotification::ObjectAdded, MIDINotification::Source);
    bench.mainLoop.turn();
    EXPECT_THAT(bench.listener.details,
        ElementsAre("ZENTA, port 5", "a MIDI source has appeared", "ZENTA, port 5"));

    bench.services.deviceList.clear();
    bench.services.notify(MIDINotification::ObjectRemoved, MIDINotification::Source);
    bench.mainLoop.turn();
    EXPECT_EQ(bench.listener.details[3], "a MIDI source has disappeared");
    EXPECT_EQ(bench.listener.events.back(), LinkEvent::NoConsole);
}

TEST(MIDIConnection, the_listener_learns_that_the_service_refuses_the_client_or_the_port)
{
    for (const char* operation : { "create client", "create input port" }) {
        LinkBench bench;
        bench.services.failing = { operation };
        bench.connection.reconnectAllSources();
        EXPECT_THAT(bench.listener.events, ElementsAre(LinkEvent::NoMIDIService)) << operation;
    }
}

TEST(MIDIConnection, the_listener_learns_of_a_source_that_no_longer_answers)
{
    LinkBench bench;
    bench.tick();
    bench.connection.reconnectAllSources();
    bench.services.deviceList.clear();
    bench.listener.details.clear();
    bench.tick();
    EXPECT_THAT(
        bench.listener.details, ElementsAre("", "the console's MIDI source no longer answers", ""));
}

TEST(MIDIConnection, the_listener_learns_at_each_check_what_is_missing)
{
    LinkBench bench;
    bench.tick();
    EXPECT_THAT(bench.listener.events, IsEmpty()) << "the first check only arms the clock";
    bench.tick();
    EXPECT_THAT(bench.listener.events, ElementsAre(LinkEvent::WorkstationRuns, LinkEvent::Opened));

    bench.listener.events.clear();
    bench.clock.advance(5s);
    bench.tick();
    EXPECT_THAT(bench.listener.events, ElementsAre(LinkEvent::WorkstationRuns));

    bench.listener.events.clear();
    bench.clock.advance(1ms);
    bench.tick();
    EXPECT_THAT(
        bench.listener.events, ElementsAre(LinkEvent::WorkstationRuns, LinkEvent::ConsoleSilent));

    bench.listener.events.clear();
    bench.processes.names.clear();
    bench.connection.answerHeartbeat();
    bench.tick();
    EXPECT_THAT(bench.listener.events, ElementsAre(LinkEvent::WorkstationMissing));
}

TEST(MIDIConnection, the_listener_learns_of_lost_packets)
{
    LinkBench bench;
    bench.services.packetsLost();
    EXPECT_THAT(bench.listener.events, ElementsAre(LinkEvent::PacketsLost));
}

TEST(MIDIConnection, an_answer_that_cannot_be_sent_is_reported)
{
    LinkBench bench;
    bench.goOnline();
    EXPECT_TRUE(bench.connection.answerHeartbeat());
    bench.services.failing = { "send" };
    EXPECT_FALSE(bench.connection.answerHeartbeat());
}

} // namespace
} // namespace kestrel::test
