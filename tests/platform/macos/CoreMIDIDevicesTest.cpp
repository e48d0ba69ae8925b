#include "platform/macos/CFHolder.h"
#include "tests/platform/macos/CoreMIDIFixture.h"

#include <gmock/gmock.h>

namespace kestrel::test {
namespace {

class CoreMIDIDevicesTest : public CoreMIDIFixture {
protected:
    ~CoreMIDIDevicesTest() override
    {
        for (const MIDIDeviceRef device : others)
            server.removeDevice(device);
    }

    MIDIDeviceRef add(CFStringRef model, std::size_t entities = 1)
    {
        return others.emplace_back(server.addDevice(model, entities, 2, 1));
    }

    std::vector<MIDIDeviceRef> others;
};

TEST_F(CoreMIDIDevicesTest, devices_are_listed_in_their_order_with_all_that_they_have)
{
    add(CFSTR("Synthesiser"), 2);
    const auto devices = services->devices();
    ASSERT_EQ(devices.size(), 2U);
    EXPECT_EQ(devices[0].model, "ZENTA");
    ASSERT_EQ(devices[0].entities.size(), 5U);
    ASSERT_EQ(devices[0].entities[4].sources.size(), 1U);
    EXPECT_EQ(devices[0].entities[4].sources[0].endpoint, source);
    EXPECT_EQ(devices[0].entities[4].sources[0].uniqueID, server.setup.source(source)->uniqueID);
    EXPECT_THAT(devices[0].entities[4].destinations, testing::ElementsAre(destination));
    EXPECT_EQ(devices[1].model, "Synthesiser");
    ASSERT_EQ(devices[1].entities.size(), 2U);
    EXPECT_EQ(devices[1].entities[1].sources.size(), 2U);
}

TEST_F(CoreMIDIDevicesTest, a_source_answers_for_its_unique_ID_until_it_is_gone)
{
    const MIDIDeviceRef device = add(CFSTR("Synthesiser"));
    const MIDISource each = services->devices()[1].entities[0].sources[0];
    EXPECT_TRUE(services->answersFor(each.endpoint, *each.uniqueID));
    EXPECT_FALSE(services->answersFor(each.endpoint, *each.uniqueID + 1));
    others.pop_back();
    server.removeDevice(device);
    EXPECT_FALSE(services->answersFor(each.endpoint, *each.uniqueID));
}

TEST_F(CoreMIDIDevicesTest, a_model_that_cannot_be_read_is_missing)
{
    add(nullptr);
    const UInt16 loneSurrogate[] = { 'Z', 0xD800 };
    const CFHolder model(CFStringCreateWithCharacters(kCFAllocatorDefault, loneSurrogate, 2));
    add(model.get());
    add(CFSTR(""));
    const auto devices = services->devices();
    ASSERT_EQ(devices.size(), 4U);
    EXPECT_EQ(devices[0].model, "ZENTA");
    EXPECT_EQ(devices[1].model, std::nullopt);
    EXPECT_EQ(devices[2].model, std::nullopt);
    EXPECT_EQ(devices[3].model, "");

    calls().failing = "MIDIObjectGetStringProperty";
    EXPECT_EQ(services->devices()[0].model, std::nullopt);
}

TEST_F(CoreMIDIDevicesTest, a_unique_ID_that_cannot_be_read_is_missing)
{
    calls().failing = "MIDIObjectGetIntegerProperty";
    const auto devices = services->devices();
    EXPECT_EQ(devices[0].entities[4].sources[0].endpoint, source);
    EXPECT_EQ(devices[0].entities[4].sources[0].uniqueID, std::nullopt);
}

TEST_F(CoreMIDIDevicesTest, objects_that_cannot_be_had_keep_their_places)
{
    for (const char* function : { "MIDIDeviceGetEntity", "MIDIEntityGetSource" }) {
        calls().failing = function;
        EXPECT_EQ(services->devices()[0].entities.size(), 5U) << function;
    }
    calls().failing = "MIDIGetDevice";
    const auto devices = services->devices();
    ASSERT_EQ(devices.size(), 1U);
    EXPECT_EQ(devices[0].model, std::nullopt);
    EXPECT_TRUE(devices[0].entities.empty());
}

// Another device is unplugged just before each of the calls in turn.
TEST_F(CoreMIDIDevicesTest, a_device_may_vanish_between_any_two_calls)
{
    constexpr int MoreCallsThanOneListTakes = 100;
    for (int last = 0; last < MoreCallsThanOneListTakes; ++last) {
        const MIDIDeviceRef vanishing = server.addDevice(CFSTR("Synthesiser"), 5, 2, 1);
        int called = 0;
        calls().before = [&](std::string_view) {
            if (called++ == last)
                server.removeDevice(vanishing);
        };
        const auto devices = services->devices();
        calls().before = {};
        server.removeDevice(vanishing);

        ASSERT_GE(devices.size(), 1U);
        EXPECT_LE(devices.size(), 2U);
        EXPECT_EQ(devices[0].model, "ZENTA");
        ASSERT_EQ(devices[0].entities.size(), 5U);
        EXPECT_EQ(devices[0].entities[4].sources[0].endpoint, source);
        EXPECT_THAT(devices[0].entities[4].destinations, testing::ElementsAre(destination));
    }
}

} // namespace
} // namespace kestrel::test
