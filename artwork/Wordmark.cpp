#include "artwork/Wordmark.h"

#include "artwork/NearestPixel.h"

#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace kestrel::artwork {

namespace {
// The design: letters are 32 units high. Horizontal strokes are 4 units thick, upright and slanting
// ones 4.6, which looks the same.
constexpr double LetterHeight = 32;
constexpr double BarThickness = 4;
constexpr double StemThickness = 4.6;

// One letter in pixels. Each is one outline, so that no strokes overlap.
struct Cut {
    double width;
    double height;
    double bar;
    double stem;
    double slant; // across the stroke
};

// Thickness along the level edge of a stroke that rises by `rise` while it goes `run` sideways.
double levelThickness(double slant, double run, double rise)
{
    return slant * std::hypot(run, rise) / rise;
}

QPolygonF letterZ(const Cut& cut)
{
    const auto& [width, height, bar, stem, slant] = cut;
    const double rise = height - 2 * bar;
    double across = stem;
    for (int i = 0; i < 8; ++i) // what the stroke takes away from its own run
        across = levelThickness(slant, width - across, rise);
    return { { { 0, 0 }, { width, 0 }, { width, bar }, { across, height - bar },
        { width, height - bar }, { width, height }, { 0, height }, { 0, height - bar },
        { width - across, bar }, { 0, bar } } };
}

QPolygonF letterE(const Cut& cut)
{
    const auto& [width, height, bar, stem, slant] = cut;
    const double middle = std::floor((height - bar) / 2);
    const double inner = std::round(width * 0.87);
    return { { { 0, 0 }, { width, 0 }, { width, bar }, { stem, bar }, { stem, middle },
        { inner, middle }, { inner, middle + bar }, { stem, middle + bar }, { stem, height - bar },
        { width, height - bar }, { width, height }, { 0, height } } };
}

QPolygonF letterN(const Cut& cut)
{
    const auto& [width, height, bar, stem, slant] = cut;
    const double run = width - 2 * stem;
    double down = slant;
    for (int i = 0; i < 8; ++i)
        down = levelThickness(slant, height - down, run);
    return { { { 0, height }, { 0, 0 }, { stem, 0 }, { width - stem, height - down },
        { width - stem, 0 }, { width, 0 }, { width, height }, { width - stem, height },
        { stem, down }, { stem, height } } };
}

QPolygonF letterT(const Cut& cut)
{
    const auto& [width, height, bar, stem, slant] = cut;
    const double left = std::floor((width - stem) / 2);
    return { { { 0, 0 }, { width, 0 }, { width, bar }, { left + stem, bar },
        { left + stem, height }, { left, height }, { left, bar }, { 0, bar } } };
}

// Without a bar, as a peak.
QPolygonF letterA(const Cut& cut)
{
    const auto& [width, height, bar, stem, slant] = cut;
    const double run = (width - stem) / 2;
    const double across = levelThickness(slant, run, height);
    const double peak = height - (width / 2 - across) * height / run;
    return { { { 0, height }, { run, 0 }, { width - run, 0 }, { width, height },
        { width - across, height }, { width / 2, peak }, { across, height } } };
}

// Letters, and the spaces after them, which hold the same area as the eye sees it: open sides count
// only near the letter.
struct Place {
    QPolygonF (*letter)(const Cut&);
    double width;
    double space;
};
constexpr Place Places[] { { letterZ, 33, 22.3 }, { letterE, 29, 22.1 }, { letterN, 33, 20.4 },
    { letterT, 33, 15.2 }, { letterA, 36, 0 } };
constexpr double WordWidth = 244;
// Letters of eight pixels. Smaller ones have no room for their strokes.
constexpr double SmallestUnit = 0.25;
} // namespace

QPainterPath zentaWordmark(const QRectF& pixels)
{
    const double across = pixels.width() / WordWidth;
    const double unit = std::min(pixels.height() / LetterHeight, across); // of thickness
    if (unit < SmallestUnit)
        return {};
    QPainterPath word;
    double x = 0;
    for (const Place& place : Places) {
        const double left = std::round(x * across);
        const double right = std::round((x + place.width) * across);
        word.addPolygon(place
                            .letter({ .width = right - left,
                                .height = pixels.height(),
                                .bar = static_cast<double>(wholePixels(BarThickness * unit)),
                                .stem = static_cast<double>(wholePixels(StemThickness * unit)),
                                .slant = StemThickness * unit })
                            .translated(pixels.left() + left, pixels.top()));
        word.closeSubpath();
        x += place.width + place.space;
    }
    return word;
}

} // namespace kestrel::artwork
