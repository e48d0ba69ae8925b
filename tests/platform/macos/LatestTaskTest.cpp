#include "platform/macos/LatestTask.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

class LatestTaskTest : public testing::Test {
protected:
    void set(const std::string& name)
    {
        task->set([this, name] { done += name; },
            [this](std::function<void()> each) { queue.push_back(std::move(each)); });
    }
    void runQueue()
    {
        for (const auto& each : queue)
            each();
        queue.clear();
    }

    std::optional<LatestTask> task { std::in_place };
    std::vector<std::function<void()>> queue;
    std::string done;
};

TEST_F(LatestTaskTest, is_performed_later_and_once)
{
    set("a");
    EXPECT_EQ(done, "");
    runQueue();
    runQueue();
    EXPECT_EQ(done, "a");
}

TEST_F(LatestTaskTest, is_not_performed_when_another_has_replaced_it)
{
    set("a");
    set("b");
    runQueue();
    EXPECT_EQ(done, "b");
}

TEST_F(LatestTaskTest, is_not_performed_when_it_was_dropped_or_its_owner_has_gone)
{
    set("a");
    task->drop();
    runQueue();
    set("b");
    task.reset();
    runQueue();
    EXPECT_EQ(done, "");
}

} // namespace
} // namespace kestrel::test
