#include "platform/linux/midi/JackCallbacks.h"

#include "tools/stage/PrivateJackServer.h"

#include <gtest/gtest.h>
#include <jack/jack.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

namespace kestrel::test {
namespace {

using namespace std::chrono_literals;

// The process callback spins until the test lets it go, without a call that could be cancelled.
class SpinningCallbacks final : public JackCallbacks {
public:
    void process(std::uint32_t) override
    {
        hasBegun = true;
        while (!mayEnd)
            ;
        isOver = true;
    }
    void portRegistered(std::uint32_t) override { }
    void portUnregistered(std::uint32_t) override { }
    void connectionRemoved(std::uint32_t, std::uint32_t) override { }
    void graphChanged() override { }
    void shutDown() override { }

    std::atomic<bool> hasBegun { false };
    std::atomic<bool> mayEnd { false };
    std::atomic<bool> isOver { false };
};

TEST(JackCallbacks, closing_the_client_waits_for_a_cycle_that_is_under_way)
{
    const stage::PrivateJackServer server;
    ::setenv("JACK_DEFAULT_SERVER", server.name().c_str(), 1);
    SpinningCallbacks callbacks;
    jack_client_t* const client = jack_client_open("spinning", JackNoStartServer, nullptr);
    ASSERT_TRUE(client);
    setCallbacks(client, callbacks);
    ASSERT_EQ(jack_activate(client), 0);
    while (!callbacks.hasBegun)
        std::this_thread::sleep_for(1ms);
    std::thread closing([client] { jack_client_close(client); });
    std::this_thread::sleep_for(500ms); // by now JACK has cancelled the thread
    callbacks.mayEnd = true;
    closing.join();
    EXPECT_TRUE(callbacks.isOver);
}

} // namespace
} // namespace kestrel::test
