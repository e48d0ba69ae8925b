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

// A private server, the services on it, and a record of all that they report. The services have
// much patience here, so that only the tests of silence depend on how fast this machine is.
class JackFixture : public testing::Test {
public:
    struct Link {
        MIDIClient client = 0;
        MIDIPort input = 0;
        MIDIPort output = 0;
        MIDIEndpoint destination = 0;
    };

    JackFixture();

    // The recorders below, as callbacks.
    static void notified(const MIDINotification& notification, void* refCon);
    static void read(MIDIPacketList& packets, void* readProcRefCon, void* srcConnRefCon);

    // Whether there is one; then it is what `reference` names from now on.
    [[nodiscard]] static bool take(std::optional<std::uint32_t> created, std::uint32_t& reference);
    [[nodiscard]] bool create(MIDIClient& client);
    // Everything a program does to receive from the last pair of the client "ZENTA", and to send
    // to the last destination of a client. With ZENTA itself that makes a loop, in which JACK
    // may pass a packet twice.
    Link connect(const std::string& receiver = "ZENTA");
    [[nodiscard]] std::optional<MIDIDevice> device(const std::string& model);
    [[nodiscard]] bool waitForPackets(std::size_t count);
    [[nodiscard]] bool waitForNotifications(std::size_t count);
    [[nodiscard]] bool send(const Link& link, const Bytes& packet);

    static constexpr auto Long = 20s; // a test that waits for it has failed

    stage::PrivateJackServer server { stage::PrivateJackServer::Cycles::WaitForClients };
    PollMainLoop loop;
    JackMIDIServices services { loop, Long };
    std::vector<Bytes> packets;
    std::vector<std::string> notifications; // "added source"
    int lists = 0;
    int idArray = 0; // its address is what connections carry
};

} // namespace kestrel::test
