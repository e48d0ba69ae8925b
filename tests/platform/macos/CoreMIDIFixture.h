#pragma once

#include "platform/macos/CoreMIDIServices.h"
#include "tests/platform/macos/stand-ins/CFObject.h"
#include "tests/platform/macos/stand-ins/Calls.h"
#include "tests/platform/macos/stand-ins/MIDIServer.h"
#include "tests/support/ManualMainLoop.h"

#include <gtest/gtest.h>

#include <vector>

namespace kestrel::test {

// The MIDI services over the MIDI server of the tests, with one console: five entities with one
// source and one destination each. At its end nothing is left over.
class CoreMIDIFixture : public testing::Test {
protected:
    CoreMIDIFixture();
    ~CoreMIDIFixture() override;

    // Notes the packets that arrive: the value behind the connection's reference, then the bytes.
    static void read(MIDIPacketList& packets, void* received, void* mark);
    using Packets = std::vector<std::vector<std::uint8_t>>;

    [[nodiscard]] MIDIClient createClient();
    MIDIPort createConnectedPort(MIDIClient client, Packets& received);
    // Plays from the console's source. On any thread.
    void play(std::vector<std::uint8_t> data) const;
    // Waits until the receive thread has done its part, then runs the main loop.
    void receiveAll();

    MIDIServer& server = MIDIServer::instance();
    MIDIDeviceRef console = 0;
    MIDIEndpointRef source = 0;
    MIDIEndpointRef destination = 0;
    ManualMainLoop mainLoop;
    std::uint8_t mark = 0x55;
    std::optional<CoreMIDIServices> services { mainLoop };

private:
    std::size_t m_portsBefore = server.ports.size();
};

} // namespace kestrel::test
