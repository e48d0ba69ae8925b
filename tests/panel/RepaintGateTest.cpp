#include "panel/RepaintGate.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
using namespace std::chrono_literals;
const RepaintGate::TimePoint Start { 1h };
} // namespace

TEST(RepaintGate, the_first_repaint_is_let_through_at_once)
{
    EXPECT_EQ(RepaintGate().delay(Start), 0ms);
}

TEST(RepaintGate, a_repaint_soon_after_another_waits_for_the_next_refresh)
{
    RepaintGate gate;
    gate.painted(Start);
    EXPECT_EQ(gate.delay(Start), 17ms);
    EXPECT_EQ(gate.delay(Start + 10ms), 7ms);
    EXPECT_EQ(gate.delay(Start + 16ms), 1ms);
}

TEST(RepaintGate, a_repaint_one_refresh_later_waits_for_nothing)
{
    RepaintGate gate;
    gate.painted(Start);
    EXPECT_EQ(gate.delay(Start + RepaintGate::Refresh), 0ms);
    EXPECT_EQ(gate.delay(Start + 1h), 0ms);
}

} // namespace kestrel::test
