#include "app/QtMainLoop.h"

#include "app/DescriptorWatch.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <string>
#include <thread>

namespace kestrel::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Pipe {
public:
    Pipe()
    {
        if (::pipe(m_ends.data()) != 0)
            std::abort();
    }
    ~Pipe()
    {
        ::close(m_ends[0]);
        ::close(m_ends[1]);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] int readEnd() const { return m_ends[0]; }
    void fill() const { EXPECT_EQ(::write(m_ends[1], "x", 1), 1); }
    void empty() const
    {
        char byte = 0;
        EXPECT_EQ(::read(m_ends[0], &byte, 1), 1);
    }

private:
    std::array<int, 2> m_ends {};
};

// Runs Qt's event loop until `done` is true. Fails after ten seconds.
void turnUntil(const std::function<bool()>& done)
{
    QTimer guard;
    guard.setSingleShot(true);
    guard.start(10000);
    while (!done() && guard.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_TRUE(guard.isActive());
}

TEST(QtMainLoop, tasks_run_later_and_in_order)
{
    QtMainLoop loop;
    std::vector<int> ran;
    for (int i = 0; i < 3; ++i)
        loop.perform([&ran, i] { ran.push_back(i); });
    EXPECT_THAT(ran, IsEmpty());
    turnUntil([&] { return ran.size() == 3; });
    EXPECT_THAT(ran, ElementsAre(0, 1, 2));
}

TEST(QtMainLoop, a_task_of_a_task_runs_after_it)
{
    QtMainLoop loop;
    std::vector<std::string> ran;
    loop.perform([&] {
        loop.perform([&] { ran.emplace_back("inner"); });
        ran.emplace_back("outer");
    });
    turnUntil([&] { return ran.size() == 2; });
    EXPECT_THAT(ran, ElementsAre("outer", "inner"));
}

TEST(QtMainLoop, tasks_from_another_thread_run_on_the_main_thread_in_order)
{
    QtMainLoop loop;
    std::vector<int> ran;
    std::thread::id where;
    std::thread other([&] {
        for (int i = 0; i < 1000; ++i) {
            loop.perform([&, i] {
                ran.push_back(i);
                where = std::this_thread::get_id();
            });
        }
    });
    turnUntil([&] { return ran.size() == 1000; });
    other.join();
    EXPECT_TRUE(std::is_sorted(ran.begin(), ran.end()));
    EXPECT_EQ(where, std::this_thread::get_id());
}

TEST(QtMainLoop, what_a_watched_descriptor_performs_runs_before_the_loop_goes_on)
{
    QtMainLoop loop;
    const Pipe pipe;
    std::vector<std::string> ran;
    const auto watch = loop.watch(pipe.readEnd(), [&] {
        pipe.empty();
        loop.perform([&] { ran.emplace_back("task"); });
        QMetaObject::invokeMethod(
            &loop, [&] { ran.emplace_back("queued event"); }, Qt::QueuedConnection);
        ran.emplace_back("ready");
    });
    pipe.fill();
    turnUntil([&] { return ran.size() == 3; });
    EXPECT_THAT(ran, ElementsAre("ready", "task", "queued event"));
}

TEST(QtMainLoop, a_loop_inside_a_watch_runs_what_is_performed)
{
    QtMainLoop loop;
    const Pipe pipe;
    std::vector<std::string> ran;
    const auto watch = loop.watch(pipe.readEnd(), [&] {
        pipe.empty();
        loop.perform([&] { ran.emplace_back("task"); });
        turnUntil([&] { return !ran.empty(); });
        ran.emplace_back("ready");
    });
    pipe.fill();
    turnUntil([&] { return ran.size() == 2; });
    EXPECT_THAT(ran, ElementsAre("task", "ready"));
}

TEST(QtMainLoop, a_loop_inside_a_task_keeps_the_order_of_the_tasks)
{
    QtMainLoop loop;
    std::vector<int> ran;
    loop.perform([&] {
        loop.perform([&] { ran.push_back(3); });
        turnUntil([&] { return ran.size() == 2; });
        ran.push_back(4);
    });
    loop.perform([&] { ran.push_back(2); });
    turnUntil([&] { return ran.size() == 3; });
    EXPECT_THAT(ran, ElementsAre(2, 3, 4));
}

// Both ways of watching, of which the main loop takes the first where Qt runs on GLib.
class DescriptorWatches : public testing::TestWithParam<decltype(&watchThroughQt)> {
protected:
    [[nodiscard]] auto watch(const std::function<void()>& ready) const
    {
        auto watch = GetParam()(m_pipe.readEnd(), ready);
        EXPECT_NE(watch, nullptr);
        return watch;
    }

    const Pipe m_pipe;
};

INSTANTIATE_TEST_SUITE_P(Ways, DescriptorWatches,
    testing::Values(
#ifndef __APPLE__
        &watchThroughGlib,
#endif
        &watchThroughQt));

TEST_P(DescriptorWatches, a_descriptor_is_reported_until_its_watch_is_gone)
{
    int calls = 0;
    auto watching = watch([&] { ++calls; });
    m_pipe.fill();
    turnUntil([&] { return calls == 3; });
    watching.reset();
    bool done = false;
    QTimer::singleShot(0, [&] { done = true; });
    turnUntil([&] { return done; });
    EXPECT_EQ(calls, 3);
}

TEST_P(DescriptorWatches, a_watch_may_end_itself)
{
    int calls = 0;
    std::unique_ptr<MainLoop::Watch> watching;
    watching = watch([&] {
        const std::string inUse(100, 'x'); // would be lost with the function
        watching.reset();
        EXPECT_EQ(inUse.size(), 100U);
        ++calls;
    });
    m_pipe.fill();
    turnUntil([&] { return calls == 1; });
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
}

TEST_P(DescriptorWatches, a_loop_inside_a_watch_reports_the_same_descriptor)
{
    int calls = 0;
    const auto watching = watch([&] {
        if (++calls == 1)
            turnUntil([&] { return calls == 2; });
        else if (calls == 2)
            m_pipe.empty();
    });
    m_pipe.fill();
    turnUntil([&] { return calls == 2; });
}

TEST_P(DescriptorWatches, a_descriptor_that_is_always_ready_leaves_turns_to_the_others)
{
    int calls = 0;
    const auto watching = watch([&] { ++calls; });
    m_pipe.fill();
    bool timedOut = false;
    bool eventCame = false;
    QTimer::singleShot(0, [&] { timedOut = true; });
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&] { eventCame = true; }, Qt::QueuedConnection);
    constexpr int Enough = 100'000; // a few tenths of a second
    while (!(timedOut && eventCame) && calls < Enough)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_LT(calls, Enough);
}

#ifndef __APPLE__
TEST(QtMainLoop, a_descriptor_comes_before_events_that_wait_longer)
{
    QtMainLoop loop;
    const Pipe pipe;
    std::vector<std::string> ran;
    const auto watch = loop.watch(pipe.readEnd(), [&] {
        pipe.empty();
        ran.emplace_back("ready");
    });
    QTimer::singleShot(0, [&] { ran.emplace_back("timer"); });
    QMetaObject::invokeMethod(
        &loop, [&] { ran.emplace_back("queued event"); }, Qt::QueuedConnection);
    pipe.fill();
    turnUntil([&] { return ran.size() == 3; });
    EXPECT_EQ(ran.front(), "ready");
}
#endif

} // namespace
} // namespace kestrel::test
