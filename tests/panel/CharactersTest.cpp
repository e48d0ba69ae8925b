#include "artwork/CharacterDrawing.h"
#include "artwork/NearestPixel.h"
#include "artwork/SmallFace.h"
#include "tests/panel/CellSize.h"
#include "tests/panel/MirroringPanel.h"
#include "tests/panel/Painted.h"
#include "tests/panel/look/Luminance.h"
#include "tests/panel/look/NaturalSize.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <numeric>

namespace kestrel::test {

using artwork::nearestPixel;

namespace {
constexpr int FirstPrintable = 0x20;
constexpr int LastPrintable = 0x7E;

// The first row of a panel of the given width on a display of density 1.
class Characters : public testing::TestWithParam<int>, protected MirroringPanel {
protected:
    Characters()
        : MirroringPanel(Window::Hidden)
    {
        view.resize(naturalSize(GetParam()));
    }

    [[nodiscard]] QRect cell(int zone, int k) const
    {
        const double horizontal = view.width() / 782.0;
        const double vertical = view.height() / 220.0;
        return { nearestPixel((298 + 97 * zone + 9 * k) * horizontal), nearestPixel(17 * vertical),
            nearestPixel(8 * horizontal), nearestPixel(13 * vertical) };
    }
    [[nodiscard]] QImage drawn(int code)
    {
        display(0, static_cast<char>(code) + std::string(9, ' '));
        return painted(view).copy(cell(0, 0));
    }
};

// The greatest difference of any channel of any pixel.
int difference(const QImage& image, const QImage& other)
{
    int greatest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb a = image.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            greatest = std::max({ greatest, std::abs(qRed(a) - qRed(b)),
                std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b)) });
        }
    }
    return greatest;
}

// The difference of all pixels together, in pixels that are lit or dark.
double distance(const QImage& image, const QImage& other)
{
    double sum = 0;
    double brightest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const double light = luminance(image.pixel(x, y));
            sum += std::abs(light - luminance(other.pixel(x, y)));
            brightest = std::max(brightest, light);
        }
    }
    return sum / brightest;
}

// The mean luminance of each column of the area.
std::vector<double> columnsOf(const QImage& image, const QRect& area)
{
    std::vector<double> columns;
    for (int x = area.left(); x <= area.right(); ++x) {
        double sum = 0;
        for (int y = area.top(); y <= area.bottom(); ++y)
            sum += luminance(image.pixel(x, y));
        columns.push_back(sum / area.height());
    }
    return columns;
}

// How many pixels' light a stem of the cell has in each row from its first to its last one.
double stemWeight(QSize cell)
{
    const QImage image = artwork::drawCharacter('|', cell);
    double light = 0;
    int first = image.height();
    int last = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = qAlpha(image.pixel(x, y));
            light += linear(alpha);
            first = alpha > 0 ? std::min(first, y) : first;
            last = alpha > 0 ? y : last;
        }
    }
    return light / (last - first + 1);
}
} // namespace

TEST_P(Characters, all_printable_ones_are_told_apart)
{
    constexpr int ClearlySeen = 50; // of 255: half the light of a lit pixel
    std::map<int, QImage> pictures;
    for (int code = FirstPrintable; code <= LastPrintable; ++code)
        pictures[code] = drawn(code);
    for (auto one = pictures.begin(); one != pictures.end(); ++one) {
        for (auto other = std::next(one); other != pictures.end(); ++other)
            EXPECT_GE(difference(one->second, other->second), ClearlySeen)
                << char(one->first) << " and " << char(other->first);
    }
}

TEST_P(Characters, no_two_letters_or_digits_have_nearly_the_same_pixels)
{
    // In pixels. Of the dots, "I" and "l" differ by one.
    const double clearlySeen = artwork::SmallFace::isFor(cell(0, 0).size()) ? 1.75 : 0.95;
    std::map<int, QImage> pictures;
    for (int code = FirstPrintable; code <= LastPrintable; ++code) {
        if (QChar(code).isLetterOrNumber())
            pictures[code] = drawn(code);
    }
    for (auto one = pictures.begin(); one != pictures.end(); ++one) {
        for (auto other = std::next(one); other != pictures.end(); ++other)
            EXPECT_GE(distance(one->second, other->second), clearlySeen)
                << char(one->first) << " and " << char(other->first);
    }
}

TEST_P(Characters, a_dark_column_parts_neighbouring_stems)
{
    for (const char letter : { 'M', 'H' }) {
        for (std::uint8_t zone = 0; zone < 4; ++zone)
            display(zone, std::string(10, letter));
        const QImage image = painted(view);
        for (int zone = 0; zone < 4; ++zone) {
            for (int k = 0; k < 9; ++k) {
                const QRect one = cell(zone, k);
                const QRect next = cell(zone, k + 1);
                QRect between(one.center(), next.center());
                between.setTop(one.top());
                between.setHeight(letter == 'M' ? 1 : std::max(1, one.height() * 3 / 13));
                const auto columns = columnsOf(image, between);
                const auto middle = columns.begin() + (one.right() + 1 - between.left());
                const auto left = std::max_element(columns.begin(), middle);
                const auto right = std::max_element(middle, columns.end());
                ASSERT_GT(right - left, 1) << letter << k;
                EXPECT_LE(*std::min_element(left, right), 0.15 * std::min(*left, *right))
                    << letter << " in zone " << zone << " at " << k;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(of_few_pixels, Characters, testing::Range(391, 1101, 7));
INSTANTIATE_TEST_SUITE_P(up_to_a_full_screen, Characters, testing::Range(1101, 3840, 83));

TEST(Strokes, grow_steadily_with_the_width_of_the_panel)
{
    double before = stemWeight(cellAt(391));
    for (int width = 392; width <= 4000; ++width) {
        const double weight = stemWeight(cellAt(width));
        EXPECT_LE(weight, 1.2 * before) << width;
        EXPECT_GE(weight, 0.85 * before) << width; // large dots have rounded corners
        before = weight;
    }
}

} // namespace kestrel::test
