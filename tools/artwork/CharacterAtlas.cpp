#include "tools/artwork/CharacterAtlas.h"

#include "tools/artwork/Canvas.h"
#include "tools/artwork/DotMatrixFont.h"

#include <algorithm>
#include <cmath>

namespace kestrel::artwork {

namespace {

constexpr int CellWidth = 8;
constexpr int CellHeight = 13;

// A dot is 1 unit wide and the next one begins 1.5 units on. At scale 2 that is two pixels and a
// gap of one. At scale 1 every second row and column falls on whole pixels, the others on two
// halves, which are drawn brighter than their area so that strokes keep an even weight.
constexpr double DotPitch = 1.5;
constexpr double WeightOfPartDots = 0.5;

constexpr QColor LitDot(190, 244, 232);
constexpr QColor UnlitDot(150, 226, 216);
constexpr double UnlitStrength = 0.085;

double overlap(int pixel, int dot, int scale)
{
    const double first = std::max(pixel * 1.0 / scale, dot * DotPitch);
    const double last = std::min((pixel + 1.0) / scale, dot * DotPitch + 1.0);
    return std::max(0.0, last - first) * scale;
}

QRgb shade(double lit, double unlit)
{
    const double on = std::pow(lit, WeightOfPartDots);
    const double off = std::pow(unlit, WeightOfPartDots) * UnlitStrength;
    const QColor& colour = on > 0.0 ? LitDot : UnlitDot;
    const int alpha = static_cast<int>(std::lround(255.0 * std::max(on, off)));
    return qPremultiply(qRgba(colour.red(), colour.green(), colour.blue(), alpha));
}

QRgb pixelOf(int code, int x, int y, int scale)
{
    double lit = 0.0;
    double unlit = 0.0;
    for (int row = 0; row < DotRows; ++row) {
        for (int column = 0; column < DotColumns; ++column) {
            const double part = overlap(x, column, scale) * overlap(y, row, scale);
            (isDotLit(code, row, column) ? lit : unlit) += part;
        }
    }
    return shade(std::min(lit, 1.0), std::min(unlit, 1.0));
}

} // namespace

QImage drawCharacterAtlas(int scale)
{
    Canvas canvas(
        QSize(CellWidth, CellHeight * CharacterCount), scale, Canvas::Backing::Transparent);
    QImage& image = canvas.pixels();
    const int pixelRows = CellHeight * scale;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, pixelOf(y / pixelRows, x, y % pixelRows, scale));
    }
    return canvas.take();
}

} // namespace kestrel::artwork
