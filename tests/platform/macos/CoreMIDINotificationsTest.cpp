#include "tests/platform/macos/CoreMIDIFixture.h"

#include <gmock/gmock.h>

#include <functional>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CoreMIDINotificationsTest : public CoreMIDIFixture {
protected:
    CoreMIDINotificationsTest() { server.runNotifications(); }

    struct Listener {
        static void notify(const MIDINotification& notification, void* refCon)
        {
            auto* const listener = static_cast<Listener*>(refCon);
            listener->heard.emplace_back(notification.messageID, notification.childType);
            if (listener->onNotification)
                std::exchange(listener->onNotification, {})();
        }

        std::vector<std::pair<std::int32_t, std::int32_t>> heard;
        std::function<void()> onNotification;
    };

    MIDIClient createListening(Listener& listener)
    {
        return services->createClient("client", Listener::notify, &listener).value_or(0);
    }

    static constexpr auto Added = MIDINotification::ObjectAdded;
    static constexpr auto Removed = MIDINotification::ObjectRemoved;
    static constexpr std::pair<std::int32_t, std::int32_t> Changed { MIDINotification::SetupChanged,
        MIDINotification::Other };
};

TEST_F(CoreMIDINotificationsTest, each_comes_in_its_order_with_the_kind_of_its_object)
{
    Listener listener;
    createListening(listener);
    const MIDIDeviceRef device = server.addDevice(CFSTR("Synthesiser"), 1, 1, 1);
    EXPECT_THAT(listener.heard, IsEmpty());
    server.runNotifications();
    EXPECT_THAT(listener.heard,
        ElementsAre(std::pair(Added, MIDINotification::Device),
            std::pair(Added, MIDINotification::Entity), std::pair(Added, MIDINotification::Source),
            std::pair(Added, MIDINotification::Destination), Changed));

    listener.heard.clear();
    server.removeDevice(device);
    server.runNotifications();
    EXPECT_THAT(listener.heard,
        ElementsAre(std::pair(Removed, MIDINotification::Source),
            std::pair(Removed, MIDINotification::Destination),
            std::pair(Removed, MIDINotification::Entity),
            std::pair(Removed, MIDINotification::Device), Changed));
}

TEST_F(CoreMIDINotificationsTest, a_callback_may_dispose_of_its_client_and_is_not_called_again)
{
    Listener listener;
    const MIDIClient client = createListening(listener);
    listener.onNotification = [&] { services->disposeClient(client); };
    server.removeDevice(console);
    server.runNotifications();
    EXPECT_EQ(listener.heard.size(), 1U);
}

TEST_F(CoreMIDINotificationsTest, a_callback_may_replace_its_client)
{
    Listener first;
    Listener second;
    const MIDIClient client = createListening(first);
    first.onNotification = [&] {
        services->disposeClient(client);
        createListening(second);
    };
    server.removeDevice(console);
    server.runNotifications();
    EXPECT_EQ(first.heard.size(), 1U);
    EXPECT_THAT(second.heard, IsEmpty());
    console = server.addDevice(CFSTR("ZENTA"), 0, 0, 0);
    server.runNotifications();
    EXPECT_EQ(second.heard.size(), 2U);
}

TEST_F(CoreMIDINotificationsTest, one_that_is_queued_for_a_disposed_client_is_dropped)
{
    Listener listener;
    const MIDIClient client = createListening(listener);
    server.removeDevice(console);
    services->disposeClient(client);
    server.runNotifications();
    EXPECT_THAT(listener.heard, IsEmpty());
}

TEST_F(
    CoreMIDINotificationsTest, packets_that_came_before_are_read_before_what_the_callback_performs)
{
    std::vector<std::string> order;
    Listener listener;
    const MIDIClient client = createListening(listener);
    const auto port = services->createInputPort(
        client, "in",
        [](MIDIPacketList&, void* refCon, void*) {
            static_cast<std::vector<std::string>*>(refCon)->emplace_back("packet");
        },
        &order);
    ASSERT_TRUE(port && services->connectSource(*port, source, &mark));
    listener.onNotification = [&] { mainLoop.perform([&] { order.emplace_back("task"); }); };
    play({ 0xF8 });
    server.receiveThread.finish();
    server.removeDevice(console);
    server.runNotifications();
    mainLoop.turn();
    EXPECT_THAT(order, ElementsAre("packet", "task"));
}

} // namespace
} // namespace kestrel::test
