#pragma once

#include "platform/linux/midi/JackMIDIServices.h"
#include "tests/platform/linux/midi/JackPeer.h"
#include "tests/support/PollMainLoop.h"
#include "tools/stage/PrivateJackServer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace kestrel::test {

using namespace std::chrono_literals;

// A private JACK server, the MIDI services on it, and a record of their reports. The services have
// long timeouts here, so that only the tests of a silent server depend on the speed of the machine.
class JackFixture : public testing::Test {
public:
    struct Link {
        MIDIClient client = 0;
        MIDIPort input = 0;
        MIDIPort output = 0;
        MIDIEndpoint destination = 0;
    };

    using Cycles = stage::PrivateJackServer::Cycles;

    explicit JackFixture(Cycles cycles = Cycles::WaitForClients);

    // Callbacks that fill the records below.
    static void notified(const MIDINotification& notification, void* refCon);
    static void read(MIDIPacketList& packets, void* readProcRefCon, void* srcConnRefCon);

    // Copies the value of `created` to `reference`. Returns false if there is no value.
    [[nodiscard]] static bool take(std::optional<std::uint32_t> created, std::uint32_t& reference);
    [[nodiscard]] bool create(MIDIClient& client);
    // Connects to receive from the last pair of the client "ZENTA" and to send to the last
    // destination of `receiver`. If `receiver` is ZENTA, this makes a loop, in which JACK may pass
    // a packet twice.
    Link connect(const std::string& receiver = "ZENTA");
    [[nodiscard]] std::optional<MIDIDevice> device(const std::string& model);
    [[nodiscard]] bool waitForPackets(std::size_t count);
    [[nodiscard]] bool waitForNotifications(std::size_t count);
    [[nodiscard]] bool send(const Link& link, const Bytes& packet);

    static constexpr auto Long = 20s; // a test that waits for it has failed

    stage::PrivateJackServer server;
    PollMainLoop loop;
    JackMIDIServices services { loop, Long };
    std::vector<Bytes> packets;
    std::vector<PollMainLoop::Clock::time_point> arrivals; // of the packets, on the main loop
    std::vector<std::string> notifications; // "added source"
    int lists = 0;
    int losses = 0; // how often the services told of lost packets
    int idArray = 0; // connections carry its address
};

} // namespace kestrel::test
