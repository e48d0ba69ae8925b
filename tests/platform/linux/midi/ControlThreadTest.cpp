#include "platform/linux/midi/ControlThread.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

// Where waiting would take the whole patience, a busy machine must not seem to have waited.
constexpr auto LongPatience = 5s;

// A job that blocks until the test releases it.
struct Hang {
    std::promise<void> gate;
    std::shared_future<void> open = gate.get_future().share();

    ControlThread::Job job() const
    {
        return [open = open] { open.wait(); };
    }
};

TEST(ControlThread, a_call_has_run_when_it_returns)
{
    ControlThread control(10s, [] {});
    bool ran = false;
    EXPECT_TRUE(control.call([&ran] { ran = true; }));
    EXPECT_TRUE(ran);
}

TEST(ControlThread, jobs_run_in_the_order_they_came)
{
    ControlThread control(10s, [] {});
    std::vector<int> order;
    control.post([&order] { order.push_back(1); });
    control.post([&order] { order.push_back(2); });
    EXPECT_TRUE(control.call([&order] { order.push_back(3); }));
    control.settle([&order] { order.push_back(4); });
    EXPECT_EQ(order, (std::vector<int> { 1, 2, 3, 4 }));
}

TEST(ControlThread, a_call_that_hangs_is_given_up_once_patience_runs_out)
{
    Hang hang;
    ControlThread control(20ms, [] {});
    const auto start = Clock::now();
    EXPECT_FALSE(control.call(hang.job()));
    EXPECT_GE(Clock::now() - start, 20ms);
    EXPECT_TRUE(control.isBehind());
    hang.gate.set_value();
}

TEST(ControlThread, while_one_hangs_the_next_call_fails_at_once_and_never_runs)
{
    Hang hang;
    auto ran = std::make_shared<bool>(false);
    std::promise<void> caughtUp;
    ControlThread control(LongPatience, [&caughtUp] { caughtUp.set_value(); });
    EXPECT_FALSE(control.call(hang.job()));
    const auto start = Clock::now();
    EXPECT_FALSE(control.call([ran] { *ran = true; }));
    EXPECT_LT(Clock::now() - start, LongPatience);
    hang.gate.set_value();
    caughtUp.get_future().wait();
    EXPECT_TRUE(control.call([] {}));
    EXPECT_FALSE(*ran);
}

TEST(ControlThread, a_result_that_comes_too_late_is_undone_before_anything_else_runs)
{
    Hang hang;
    auto order = std::make_shared<std::vector<std::string>>();
    const auto nextHasRun = std::make_shared<std::promise<void>>();
    ControlThread control(20ms, [] {});
    EXPECT_FALSE(control.call(
        [open = hang.open, order] {
            open.wait();
            order->push_back("work");
        },
        [order] { order->push_back("undo"); }));
    control.post([order, nextHasRun] {
        order->push_back("next");
        nextHasRun->set_value();
    });
    hang.gate.set_value();
    nextHasRun->get_future().wait();
    EXPECT_EQ(*order, (std::vector<std::string> { "work", "undo", "next" }));
}

TEST(ControlThread, a_result_in_time_is_not_undone)
{
    ControlThread control(10s, [] {});
    bool undone = false;
    EXPECT_TRUE(control.call([] {}, [&undone] { undone = true; }));
    control.settle([] {});
    EXPECT_FALSE(undone);
}

TEST(ControlThread, what_must_be_done_runs_even_while_one_hangs_but_is_not_waited_for)
{
    Hang hang;
    std::promise<void> settled;
    ControlThread control(LongPatience, [] {});
    EXPECT_FALSE(control.call(hang.job()));
    const auto start = Clock::now();
    control.settle([&settled] { settled.set_value(); });
    EXPECT_LT(Clock::now() - start, LongPatience);
    hang.gate.set_value();
    EXPECT_EQ(settled.get_future().wait_for(10s), std::future_status::ready);
}

TEST(ControlThread, calls_work_again_once_it_has_caught_up)
{
    Hang hang;
    std::promise<void> caughtUp;
    ControlThread control(LongPatience, [&caughtUp] { caughtUp.set_value(); });
    EXPECT_FALSE(control.call(hang.job()));
    hang.gate.set_value();
    caughtUp.get_future().wait();
    EXPECT_FALSE(control.isBehind());
    EXPECT_TRUE(control.call([] {}));
}

TEST(ControlThread, its_end_waits_for_what_is_queued)
{
    bool ran = false;
    {
        ControlThread control(10s, [] {});
        control.post([] {});
        control.post([&ran] { ran = true; });
    }
    EXPECT_TRUE(ran);
}

TEST(ControlThread, its_end_does_not_wait_for_what_hangs_which_still_ends_properly)
{
    Hang hang;
    const auto undone = std::make_shared<std::promise<void>>();
    {
        ControlThread control(50ms, [] {});
        EXPECT_FALSE(control.call(hang.job(), [undone] { undone->set_value(); }));
    } // waiting for the job would never end
    hang.gate.set_value();
    EXPECT_EQ(undone->get_future().wait_for(10s), std::future_status::ready);
}

} // namespace
} // namespace kestrel::test
