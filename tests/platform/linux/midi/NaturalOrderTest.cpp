#include "platform/linux/midi/NaturalOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace kestrel::test {
namespace {

using Names = std::vector<std::string>;

Names sorted(Names names)
{
    std::sort(names.begin(), names.end(), comesNaturallyBefore);
    return names;
}

TEST(NaturalOrder, numbers_count_as_numbers)
{
    EXPECT_EQ(sorted({ "midi_10", "midi_2", "midi_1", "midi_11", "midi_9" }),
        (Names { "midi_1", "midi_2", "midi_9", "midi_10", "midi_11" }));
}

TEST(NaturalOrder, what_follows_a_number_decides_between_equal_numbers)
{
    EXPECT_EQ(sorted({ "midi_10_in", "midi_2_out", "midi_2_in" }),
        (Names { "midi_2_in", "midi_2_out", "midi_10_in" }));
}

TEST(NaturalOrder, a_number_longer_than_any_integer_is_compared_by_its_digits)
{
    EXPECT_TRUE(comesNaturallyBefore("p99999999999999999999999", "p100000000000000000000000"));
    EXPECT_FALSE(comesNaturallyBefore("p100000000000000000000000", "p99999999999999999999999"));
}

TEST(NaturalOrder, leading_zeros_do_not_change_a_number)
{
    EXPECT_EQ(sorted({ "p010", "p9", "p011" }), (Names { "p9", "p010", "p011" }));
}

TEST(NaturalOrder, the_same_number_written_differently_still_has_one_order)
{
    EXPECT_TRUE(comesNaturallyBefore("p01", "p1"));
    EXPECT_FALSE(comesNaturallyBefore("p1", "p01"));
    EXPECT_TRUE(comesNaturallyBefore("p01a", "p1b")); // the letters come first
    EXPECT_TRUE(comesNaturallyBefore("p1a", "p01b"));
    EXPECT_TRUE(comesNaturallyBefore("p00", "p000"));
}

TEST(NaturalOrder, a_beginning_comes_before_what_goes_on)
{
    EXPECT_EQ(sorted({ "midi_1", "midi", "" }), (Names { "", "midi", "midi_1" }));
}

TEST(NaturalOrder, equal_names_are_not_before_each_other)
{
    EXPECT_FALSE(comesNaturallyBefore("midi_1", "midi_1"));
    EXPECT_FALSE(comesNaturallyBefore("", ""));
}

} // namespace
} // namespace kestrel::test
