#include "setup/TitleLayout.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrel::test {
namespace {

constexpr double Height = 78;
constexpr double Usable = 66;

// Measures every UTF-16 unit as ten wide.
double tens(QStringView text)
{
    return 10.0 * static_cast<double>(text.size());
}

std::vector<std::string> broken(const QString& name, double usable, int mostLines = 4)
{
    std::vector<std::string> lines;
    for (const QStringView line : TitleLayout::brokenName(name, usable, mostLines, tens))
        lines.push_back(line.toString().toStdString());
    return lines;
}

using Lines = std::vector<std::string>;

TEST(TitleLayout, two_lines_are_a_quarter_of_the_height_three_a_fifth_and_four_or_more_a_sixth)
{
    EXPECT_EQ(TitleLayout::lineHeight(0, Height), Height / 5);
    EXPECT_EQ(TitleLayout::lineHeight(1, Height), Height / 5);
    EXPECT_EQ(TitleLayout::lineHeight(2, Height), Height / 4);
    EXPECT_EQ(TitleLayout::lineHeight(3, Height), Height / 5);
    EXPECT_EQ(TitleLayout::lineHeight(4, Height), Height / 6);
    EXPECT_EQ(TitleLayout::lineHeight(9, Height), Height / 6);
}

TEST(TitleLayout, the_first_line_is_two_lines_down_below_two_lines_and_one_line_down_otherwise)
{
    EXPECT_EQ(TitleLayout::firstLineTop(0, Height), 2 * Height / 5);
    EXPECT_EQ(TitleLayout::firstLineTop(1, Height), 2 * Height / 5);
    EXPECT_EQ(TitleLayout::firstLineTop(2, Height), Height / 4);
    EXPECT_EQ(TitleLayout::firstLineTop(3, Height), Height / 5);
    EXPECT_EQ(TitleLayout::firstLineTop(4, Height), Height / 6);
}

TEST(TitleLayout, exactly_twice_the_usable_width_asks_for_two_lines_and_one_more_for_three)
{
    EXPECT_EQ(TitleLayout::lineCount(2 * Usable, Usable), 2);
    EXPECT_EQ(TitleLayout::lineCount(2 * Usable + 1, Usable), 3);
    EXPECT_EQ(TitleLayout::lineCount(2 * Usable - 1, Usable), 2);
}

TEST(TitleLayout, a_fraction_beyond_a_multiple_asks_for_no_further_line)
{
    EXPECT_EQ(TitleLayout::lineCount(Usable + 0.5, Usable), 1);
    EXPECT_EQ(TitleLayout::lineCount(0.5, Usable), 0);
    EXPECT_EQ(TitleLayout::lineCount(Usable, Usable), 1);
}

TEST(TitleLayout, a_name_that_fits_is_one_line)
{
    EXPECT_EQ(broken("abc", 40), (Lines { "abc" }));
    EXPECT_EQ(broken("abcd", 40), (Lines { "abcd" }));
}

TEST(TitleLayout, a_run_that_reaches_the_width_exactly_keeps_its_last_character)
{
    EXPECT_EQ(broken("abcdefgh", 40), (Lines { "abcd", "efgh" }));
}

TEST(TitleLayout, a_run_that_passes_the_width_gives_its_last_character_to_the_next_line)
{
    EXPECT_EQ(broken("abcdefgh", 45), (Lines { "abcd", "efgh" }));
    EXPECT_EQ(broken("abcdefghi", 45), (Lines { "abcd", "efgh", "i" }));
}

TEST(TitleLayout, no_more_lines_are_made_than_asked_for)
{
    EXPECT_EQ(broken("abcdefgh", 20, 3), (Lines { "ab", "cd", "ef" }));
    EXPECT_EQ(broken("abcdefgh", 20, 0), Lines());
}

TEST(TitleLayout, a_character_wider_than_the_line_stands_alone)
{
    EXPECT_EQ(broken("abc", 5), (Lines { "a", "b", "c" }));
}

TEST(TitleLayout, an_empty_name_has_no_line)
{
    EXPECT_EQ(broken("", 40), Lines());
}

TEST(TitleLayout, combined_characters_and_pairs_are_not_torn_apart)
{
    const QString accented = u"e\u0301e\u0301e\u0301"_qs;
    EXPECT_EQ(broken(accented, 30),
        (Lines { u"e\u0301"_qs.toStdString(), u"e\u0301"_qs.toStdString(),
            u"e\u0301"_qs.toStdString() }));
    const QString hats = u"\U0001F3A9\U0001F3A9"_qs;
    EXPECT_EQ(broken(hats, 30),
        (Lines { u"\U0001F3A9"_qs.toStdString(), u"\U0001F3A9"_qs.toStdString() }));
}

} // namespace
} // namespace kestrel::test
