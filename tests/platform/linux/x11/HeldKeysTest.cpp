#include "platform/linux/x11/HeldKeys.h"

#include "tools/stage/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
constexpr XKeyCode KeyA = 38;

// While it stands still, it answers nothing, and what is sent to it is lost.
class FakeKeyServer final : public KeyServer {
public:
    unsigned post(const KeyStep& step) override
    {
        if (!standsStill)
            down.set(step.key, step.direction == KeyEvents::Direction::Down);
        return ++m_request;
    }
    void flush() override { }
    bool synchronise() override { return !standsStill; }
    std::optional<XKeySet> keysDown() override
    {
        return standsStill ? std::nullopt : std::optional(down);
    }

    XKeySet down;
    bool standsStill = false;

private:
    unsigned m_request = 0;
};

class HeldKeysTest : public testing::Test {
protected:
    [[nodiscard]] XKeySet journal() const { return HeldKeysJournal::keysIn(path); }

    stage::TemporaryFolder folder;
    const std::string path = (folder.path() / "keys").string();
    FakeKeyServer server;
    HeldKeys keys { server };
};
} // namespace

TEST_F(HeldKeysTest, of_a_killed_run_stay_in_the_journal_until_the_server_answers)
{
    HeldKeysJournal(path).enter(XKeySet().set(KeyA));
    server.down.set(KeyA);
    keys.openJournal(path);
    server.standsStill = true;
    keys.letGoOfWhatWasLeftDown();
    EXPECT_TRUE(journal().test(KeyA)) << "the server has not let go of it";
    server.standsStill = false;
    keys.letGoOfWhatWasLeftDown();
    EXPECT_TRUE(server.down.none());
    EXPECT_TRUE(journal().none());
}

TEST_F(HeldKeysTest, of_a_lost_connection_are_released_again_until_the_server_answers)
{
    keys.post(keys.ledger().press(KeyA, {}, KeyEvents::AutoRepeat::No));
    ASSERT_TRUE(server.down.test(KeyA));
    keys.connectionLost();
    server.standsStill = true;
    keys.letGoOfWhatWasLeftDown();
    server.standsStill = false;
    keys.letGoOfWhatWasLeftDown();
    EXPECT_TRUE(server.down.none()) << "there is no journal that knows of it";
}

} // namespace kestrel::test
