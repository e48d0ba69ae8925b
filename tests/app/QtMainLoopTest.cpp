#include "app/QtMainLoop.h"

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

TEST(QtMainLoop, a_descriptor_is_reported_until_its_watch_is_gone)
{
    QtMainLoop loop;
    const Pipe pipe;
    int calls = 0;
    auto watch = loop.watch(pipe.readEnd(), [&] { ++calls; });
    pipe.fill();
    turnUntil([&] { return calls == 3; });
    watch.reset();
    bool done = false;
    loop.perform([&] { done = true; });
    turnUntil([&] { return done; });
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 3);
}

TEST(QtMainLoop, a_watch_may_end_itself)
{
    QtMainLoop loop;
    const Pipe pipe;
    int calls = 0;
    std::unique_ptr<MainLoop::Watch> watch;
    watch = loop.watch(pipe.readEnd(), [&] {
        watch.reset();
        ++calls;
    });
    pipe.fill();
    turnUntil([&] { return calls == 1; });
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace kestrel::test
