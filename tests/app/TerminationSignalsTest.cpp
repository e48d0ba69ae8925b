#include "app/TerminationSignals.h"

#include "app/EndDeadline.h"
#include "app/QtMainLoop.h"

#include <QCoreApplication>

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>

namespace kestrel::test {
namespace {

class TerminationSignal : public testing::TestWithParam<int> { };

TEST_P(TerminationSignal, becomes_a_call_on_the_main_thread)
{
    QtMainLoop loop;
    int calls = 0;
    {
        const TerminationSignals terminationSignals(loop, std::array { GetParam() }, [&calls] {
            ++calls;
            QCoreApplication::quit();
        });
        ::raise(GetParam());
        EXPECT_EQ(calls, 0) << "never inside the handler";
        QCoreApplication::exec();
        EXPECT_EQ(calls, 1);
    }
    ::raise(GetParam()); // would end this program
}

INSTANTIATE_TEST_SUITE_P(
    Each, TerminationSignal, testing::Values(SIGTERM, SIGINT, SIGHUP, SIGQUIT, SIGALRM));

void endThisProgramWhileItIsBusy(int repetitions)
{
    QtMainLoop loop;
    const TerminationSignals endings(loop, std::array { SIGTERM }, [] {});
    for (int i = 0; i < repetitions; ++i) {
        ::raise(SIGTERM);
        ::usleep(500'000);
    }
    for (;;)
        ::pause();
}

TEST(TerminationSignals, end_a_program_that_does_not_come_back_to_its_main_loop)
{
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EXIT(endThisProgramWhileItIsBusy(1), testing::ExitedWithCode(1), "without waiting");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(EndDeadline, is_not_moved_forward_by_an_alarm_from_elsewhere)
{
    EndDeadline::set(100, 1);
    ::raise(SIGALRM); // would end the test
    EndDeadline::cancel();
    EXPECT_EQ(::alarm(0), 0u);
}

TEST(TerminationSignals, that_are_repeated_do_not_move_the_deadline)
{
    EXPECT_EXIT(endThisProgramWhileItIsBusy(20), testing::ExitedWithCode(1), "without waiting");
}

TEST(TerminationSignals, leave_a_program_that_came_back_in_time_its_time)
{
    QtMainLoop loop;
    const TerminationSignals endings(
        loop, std::array { SIGTERM }, [] { QCoreApplication::quit(); });
    ::raise(SIGTERM);
    QCoreApplication::exec();
    EXPECT_EQ(::alarm(0), 0u) << "no deadline is set any more";
}

TEST(TerminationSignals, a_write_to_a_closed_pipe_fails_and_ends_nothing)
{
    QtMainLoop loop;
    const TerminationSignals endings(loop, {}, [] {});
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::close(ends[0]);
    EXPECT_EQ(::write(ends[1], "x", 1), -1);
    EXPECT_EQ(errno, EPIPE);
    ::close(ends[1]);
}

} // namespace
} // namespace kestrel::test
