#include "tests/platform/linux/midi/JackFixture.h"
#include "tests/platform/linux/midi/OwnProcess.h"

namespace kestrel::test {
namespace {

class JackFootprint : public JackFixture {
protected:
    MIDIClient client = 0;
};

// A server that waits for its clients would also wait for one that is closed in the midst of a
// cycle, until it gives it up, and would open no other meanwhile.
class JackFootprintIndependent : public JackFixture {
protected:
    JackFootprintIndependent()
        : JackFixture(Cycles::Independent)
    {
    }
};

TEST_F(JackFootprint, deaths_of_the_server_leak_neither_descriptors_nor_threads)
{
    const auto round = [this] {
        ASSERT_TRUE(create(client));
        MIDIPort port = 0;
        ASSERT_TRUE(take(services.createInputPort(client, "in", read, this), port));
        server.kill();
        notifications.clear();
        ASSERT_TRUE(waitForNotifications(1));
        services.disposeClient(client);
        server.start();
    };
    round();
    const std::size_t open = OwnProcess::descriptors();
    const std::size_t threads = OwnProcess::threads();
    for (int i = 0; i < 5; ++i)
        round();
    EXPECT_TRUE(OwnProcess::descriptorsFallTo(open));
    EXPECT_TRUE(OwnProcess::threadsFallTo(threads));
}

TEST_F(JackFootprintIndependent, two_hundred_clients_leak_neither_descriptors_nor_threads)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(5);
    services.disposeClient(connect().client);
    const std::size_t open = OwnProcess::descriptors();
    const std::size_t threads = OwnProcess::threads();
    for (int i = 0; i < 200; ++i)
        services.disposeClient(connect().client);
    EXPECT_TRUE(OwnProcess::descriptorsFallTo(open));
    EXPECT_TRUE(OwnProcess::threadsFallTo(threads));
}

TEST_F(JackFootprint, an_idle_link_wakes_nobody)
{
    JackPeer zenta("ZENTA");
    zenta.addPairs(5);
    connect();
    loop.runFor(500ms);
    EXPECT_LE(loop.turns(), zenta.lateCycles()) << "only a cycle that came too late may wake it";
}

} // namespace
} // namespace kestrel::test
