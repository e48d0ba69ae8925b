#include "tests/end-to-end/RunningStudio.h"
#include "tests/end-to-end/SessionManager.h"
#include "tools/stage/Patience.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace kestrel::test {
namespace {

using stage::milliseconds;

constexpr milliseconds Patience { 20000 };

// After its answer the session may end the program without another message.
TEST(SessionEnd, is_answered_when_the_assignments_are_stored)
{
    RunningStudio studio(stage::Studio::Options { .tray = false });
    studio.studio.assign({ "1", "A" });
    SessionManager session;
    auto environment = studio.studio.environment();
    environment.merge(session.environment());
    stage::ChildProcess kestrel({ std::string(KESTREL_PROGRAMS) + "/kestrel" }, environment);
    ASSERT_TRUE(stage::comesTrue([&] { return session.hasClient(); }, Patience));

    const auto defaults = studio.studio.configFolder() / "com.holvik.kestrel.plist";
    std::filesystem::remove(defaults); // the program has read it
    session.endSession();
    EXPECT_TRUE(stage::comesTrue([&] { return session.isSaved(); }, Patience));
    EXPECT_TRUE(std::filesystem::exists(defaults));
    EXPECT_FALSE(kestrel.wait(milliseconds(0))) << "the session may still go on";
}

} // namespace
} // namespace kestrel::test
