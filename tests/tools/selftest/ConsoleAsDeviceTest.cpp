#include "tools/selftest/utility/ConsoleAsDevice.h"

#include "tests/fakes/FakeMIDIServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrel::selftest {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

class ConsoleAsDeviceTest : public testing::Test {
protected:
    ConsoleAsDeviceTest()
    {
        auto fake = std::make_unique<test::FakeMIDIServices>();
        real = fake.get();
        real->deviceList = { { .model = "Keyboard", .entities = {} } };
        services = std::make_unique<ConsoleAsDevice>(std::move(fake), [this] { return entities; });
    }

    test::FakeMIDIServices* real = nullptr;
    std::vector<MIDIEntity> entities;
    std::unique_ptr<ConsoleAsDevice> services;
};

TEST_F(ConsoleAsDeviceTest, without_a_simulated_console_shows_the_real_devices_alone)
{
    ASSERT_TRUE(services->createClient("client", nullptr, nullptr));
    EXPECT_THAT(services->devices(), SizeIs(1));
}

TEST_F(ConsoleAsDeviceTest, shows_the_simulated_console_after_the_real_devices)
{
    ASSERT_TRUE(services->createClient("client", nullptr, nullptr));
    entities = { { .sources = { { .endpoint = 7, .uniqueID = -7 } }, .destinations = { 8 } } };
    const auto devices = services->devices();
    ASSERT_THAT(devices, SizeIs(2));
    EXPECT_EQ(devices[1].model, "ZENTA");
    ASSERT_THAT(devices[1].entities, SizeIs(1));
    EXPECT_EQ(devices[1].entities[0].sources[0].uniqueID, -7);
    entities.clear();
    EXPECT_THAT(services->devices(), SizeIs(1)) << "the console has gone";
}

TEST_F(ConsoleAsDeviceTest, passes_everything_else_to_the_real_services)
{
    const auto client = services->createClient("client", nullptr, nullptr);
    ASSERT_TRUE(client);
    const auto input = services->createInputPort(*client, "in", nullptr, nullptr);
    const auto output = services->createOutputPort(*client, "out");
    ASSERT_TRUE(input && output);
    EXPECT_FALSE(services->connectSource(*input, 7, nullptr)) << "the fake has no such source";
    EXPECT_FALSE(services->answersFor(7, -7));
    const std::uint8_t answer[] = { 0x90, 0x00, 0x7F };
    static_cast<void>(services->send(*output, 8, { 0, answer }));
    ASSERT_THAT(real->sent, SizeIs(1));
    EXPECT_THAT(real->sent[0].data, ElementsAre(0x90, 0x00, 0x7F));
    bool isLost = false;
    services->setPacketsLost([&isLost] { isLost = true; });
    real->packetsLost();
    EXPECT_TRUE(isLost);
    services->disposePort(*output);
    EXPECT_FALSE(services->send(*output, 8, { 0, answer })) << "the port is gone";
    services->disposeClient(*client);
    EXPECT_FALSE(services->createOutputPort(*client, "out")) << "the client is gone";
}

} // namespace
} // namespace kestrel::selftest
