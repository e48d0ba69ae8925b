#include "app/TerminationSignals.h"

#include "app/QtMainLoop.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <csignal>

namespace kestrel::test {
namespace {

class TerminationSignal : public testing::TestWithParam<int> { };

TEST_P(TerminationSignal, becomes_a_call_on_the_main_thread)
{
    QtMainLoop loop;
    int calls = 0;
    {
        const TerminationSignals terminationSignals(loop, [&calls] {
            ++calls;
            QCoreApplication::quit();
        });
        ::raise(GetParam());
        EXPECT_EQ(calls, 0) << "never inside the handler";
        QCoreApplication::exec();
        EXPECT_EQ(calls, 1);
    }
    struct sigaction now { };
    ::sigaction(GetParam(), nullptr, &now);
    EXPECT_EQ(now.sa_handler, SIG_DFL);
}

INSTANTIATE_TEST_SUITE_P(Each, TerminationSignal, testing::Values(SIGTERM, SIGINT, SIGHUP));

} // namespace
} // namespace kestrel::test
