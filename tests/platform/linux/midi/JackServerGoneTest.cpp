#include "tests/platform/linux/midi/JackFixture.h"

#include <cstdlib>
#include <memory>

namespace kestrel::test {
namespace {

class JackServerGone : public JackFixture {
protected:
    MIDIClient client = 0;
};

TEST_F(JackServerGone, without_a_server_no_client_is_created_quietly_and_within_bounds)
{
    ::setenv("JACK_DEFAULT_SERVER", "kestrel-no-such-server", 1);
    testing::internal::CaptureStderr();
    const auto start = PollMainLoop::Clock::now();
    EXPECT_FALSE(create(client));
    EXPECT_LT(PollMainLoop::Clock::now() - start, Long) << "there is nobody to wait for";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(client, 0u);
    EXPECT_TRUE(services.devices().empty());
}

TEST_F(JackServerGone, the_death_of_the_server_is_the_removal_of_a_source_and_ends_the_link)
{
    auto zenta = std::make_unique<JackPeer>("ZENTA");
    zenta->addPairs(5);
    const Link link = connect();
    server.kill();
    ASSERT_TRUE(waitForNotifications(1));
    EXPECT_EQ(notifications, (std::vector<std::string> { "removed source" }));
    EXPECT_FALSE(send(link, { 0x90, 0x00, 0x7F }));
    EXPECT_TRUE(services.devices().empty());
    services.disposeClient(link.client);
    zenta.reset();
    EXPECT_FALSE(create(client));
}

TEST_F(JackServerGone, after_a_restart_under_the_same_name_the_link_works_again)
{
    auto zenta = std::make_unique<JackPeer>("ZENTA");
    zenta->addPairs(5);
    const Link before = connect();
    server.kill();
    ASSERT_TRUE(waitForNotifications(1));
    services.disposeClient(before.client);
    zenta.reset();
    server.start();
    zenta = std::make_unique<JackPeer>("ZENTA");
    zenta->addPairs(5);
    const Link after = connect();
    EXPECT_EQ(after.destination, before.destination);
    zenta->send("midi_5", { { 0x90, 0x00, 0x00 } });
    ASSERT_TRUE(waitForPackets(1));
    ASSERT_TRUE(send(after, { 0x90, 0x00, 0x7F }));
    EXPECT_EQ(zenta->received("midi_5_in", 1, std::chrono::milliseconds(Long)),
        (std::vector<Bytes> { { 0x90, 0x00, 0x7F } }));
}

TEST_F(JackServerGone, the_client_can_be_disposed_of_before_its_death_is_noticed)
{
    ASSERT_TRUE(create(client));
    server.kill();
    services.disposeClient(client);
    EXPECT_FALSE(create(client));
    EXPECT_TRUE(notifications.empty());
    server.start();
    EXPECT_TRUE(create(client));
}

} // namespace
} // namespace kestrel::test
