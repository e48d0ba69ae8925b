#include "tests/panel/look/DisplayFigures.h"

#include <gtest/gtest.h>

namespace kestrel::test {

namespace {
struct Shown {
    int width; // of the panel, in units of the screen
    double density;

    friend void PrintTo(const Shown& shown, std::ostream* out)
    {
        *out << shown.width << " wide at density " << shown.density;
    }
};

class DisplayLegibility : public testing::TestWithParam<Shown> { };

std::vector<Shown> everySize()
{
    std::vector<Shown> sizes;
    for (const int width : { 391, 450, 587, 700, 782, 1001, 1173, 1564, 1920, 3840 }) {
        for (const double density : { 1.0, 1.25, 1.5, 1.75, 2.0, 3.0 }) {
            if (width * density <= 4000) // more pixels than a screen has
                sizes.push_back({ width, density });
        }
    }
    return sizes;
}
} // namespace

TEST_P(DisplayLegibility, text_stands_out_and_all_its_strokes_are_equally_bright)
{
    const DisplayFigures figures = displayFigures(GetParam().width, GetParam().density);
    EXPECT_GE(figures.contrast, 7);
    EXPECT_GE(figures.evenStems, 0.9);
    EXPECT_GE(figures.evenBars, 0.9);
}

INSTANTIATE_TEST_SUITE_P(, DisplayLegibility, testing::ValuesIn(everySize()));

} // namespace kestrel::test
