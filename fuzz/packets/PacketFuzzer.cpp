#include "assign/KeystrokePoster.h"
#include "assign/StoredAssignments.h"
#include "assign/UserAssignFile.h"
#include "fuzz/Target.h"
#include "link/MIDIConnection.h"
#include "link/MessageDispatcher.h"
#include "tests/fakes/FakeKeyEvents.h"
#include "tests/fakes/FakeMIDIServices.h"
#include "tests/fakes/FakeSystem.h"
#include "tests/fakes/Recorders.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ManualMainLoop.h"

#include <algorithm>

namespace kestrel {
namespace {

// A set with a shortcut on every key. Made once: no packet changes it.
const StoredAssignments& fullSet()
{
    static test::FakeDefaultsStore defaults;
    static StoredAssignments assignments(defaults);
    if (!assignments.myUserAssignFile()) {
        assignments.setupShortcutKey();
        for (int number = 1; number <= UserAssignFile::ButtonCount; ++number) {
            ArchiveArray& entry = *assignments.myUserAssignFile()->getSwitchShortcut(number);
            entry.replace(ShortcutRecord::Modifiers, ArchiveValue(Modifier::Command));
            entry.replace(ShortcutRecord::Text, ArchiveValue(QStringLiteral("A")));
        }
    }
    return assignments;
}

// The way from the read callback to the panel and the keyboard.
class PacketPath final : public MessageDispatcher::Destinations {
public:
    PacketPath()
    {
        m_services.deviceList = { test::device(1, "ZENTA", 5) };
        m_workspace.applications = { { "Pro Tools", true } };
        m_connection.reconnectAllSources();
    }

    // The first byte of each packet is its length. Returns what is wrong.
    std::string feed(std::span<const std::uint8_t> bytes)
    {
        std::vector<test::Bytes> packets;
        while (!bytes.empty()) {
            const std::size_t length = std::min<std::size_t>(bytes[0], bytes.size() - 1);
            const auto packet = bytes.subspan(1, length);
            packets.emplace_back(packet.begin(), packet.end());
            bytes = bytes.subspan(1 + length);
        }
        m_services.deliver(packets);
        check(packets.size());
        return m_fault;
    }

    void answerHeartbeat() override { m_connection.answerHeartbeat(); }
    void redrawLCDdisplay(const MIDIMessage& message) override
    {
        require(message.readData().size() > 6, "a display message without its command");
        m_display.redrawLCDdisplay(message);
    }
    void redrawDSParea(const MIDIMessage& message) override
    {
        require(message.readData().size() > 2, "a panel message without a value");
        m_display.redrawDSParea(message);
    }
    void eventKeyPost(unsigned int buttonCode) override { m_poster.eventKeyPost(buttonCode); }

private:
    void require(bool holds, const char* otherwise)
    {
        if (!holds)
            m_fault = otherwise;
    }

    void check(std::size_t packetCount)
    {
        // A key is one event with its flag, and the release of its modifier.
        require(m_keys.posted.size() <= 2 * packetCount, "more keys than packets");
        require(m_services.sent.size() + m_display.calls.size() + m_keys.posted.size() / 2
                <= packetCount,
            "a packet went to two places");
        for (const auto& sent : m_services.sent)
            require(sent.data == test::Bytes { 0x90, 0x00, 0x7F }, "a wrong answer");
        for (std::size_t i = 0; i < m_keys.posted.size(); ++i)
            require((i % 2 == 0) != (m_keys.posted[i] == "bare 55 up"), "a modifier left behind");
    }

    std::string m_fault;
    test::FakeMIDIServices m_services;
    test::FakeProcessTable m_processes;
    test::ManualMainLoop m_mainLoop;
    test::ManualClock m_clock;
    test::RecordingDisplay m_display;
    test::FakeWorkspace m_workspace;
    test::FakeKeyEvents m_keys;
    test::FakePermissions m_permissions;
    KeystrokePoster m_poster { fullSet(), m_workspace, m_keys, m_permissions };
    MessageDispatcher m_dispatcher { *this };
    MIDIConnection m_connection { { m_services, m_processes, m_mainLoop, m_clock },
        [this](const MIDIMessage& message) { m_dispatcher.receiveMessage(message); } };
};

} // namespace
} // namespace kestrel

std::string kestrel::fuzz::fault(std::span<const std::uint8_t> input)
{
    return PacketPath().feed(input);
}
