#include "artwork/BrushedMetal.h"

#include "artwork/Canvas.h"
#include "artwork/Light.h"
#include "artwork/NearestPixel.h"
#include "artwork/Noise.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace kestrel::artwork {

namespace {

int level(double value)
{
    return static_cast<int>(std::lround(std::clamp(value, 0.0, 255.0)));
}

double mix(int from, int to, double t)
{
    return from + (to - from) * t;
}

// The soft light from above the middle, before it fades downwards.
std::vector<double> lightAcross(int width)
{
    std::vector<double> light(static_cast<std::size_t>(width));
    for (int x = 0; x < width; ++x) {
        const double across = 2.0 * x / (width - 1) - 1.0;
        light[static_cast<std::size_t>(x)] = 9.0 * std::exp(-2.2 * across * across);
    }
    return light;
}

} // namespace

void lay(Canvas& canvas, const BrushedMetal& metal)
{
    QImage& image = canvas.pixels();
    const int height = image.height();
    const int cell = wholePixels(56 * canvas.scale());
    const std::vector<double> light = lightAcross(image.width());
    for (int y = 0; y < height; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        const double down = static_cast<double>(y) / (height - 1);
        const double fade = (1.0 - down) * (1.0 - down);
        const double row = 0.9 * noiseAt(0, y, metal.seed);
        const double red = mix(metal.top.red(), metal.bottom.red(), down);
        const double green = mix(metal.top.green(), metal.bottom.green(), down);
        const double blue = mix(metal.top.blue(), metal.bottom.blue(), down);
        StreakLine streak(y, cell, metal.seed + 7);
        for (int x = 0; x < image.width(); ++x) {
            const double grain = row + 1.9 * streak.next() + 0.7 * noiseAt(x, y, metal.seed + 13);
            const double shade = light[static_cast<std::size_t>(x)] * fade + metal.grain * grain;
            line[x] = qRgb(level(red + shade), level(green + shade), level(blue + shade));
        }
    }
}

void bevelEdge(Canvas& canvas)
{
    QPainter& painter = canvas.painter();
    const QRectF sheet(QPointF(0, 0), QSizeF(canvas.units()));
    const auto draw = [&](const QRectF& line, const QColor& colour) {
        painter.fillRect(canvas.onPixels(line), colour);
    };
    draw(QRectF(0, 0, sheet.width(), 1), QColor(255, 255, 255, 42));
    draw(QRectF(0, 1, 1, sheet.height() - 2), QColor(255, 255, 255, 16));
    draw(QRectF(sheet.width() - 1, 1, 1, sheet.height() - 2), QColor(0, 0, 0, 90));
    draw(QRectF(0, sheet.height() - 1, sheet.width(), 1), QColor(0, 0, 0, 140));
}

void driveScrew(Canvas& canvas, QPointF centre, double radius, double turn)
{
    QPainterPath hole;
    hole.addEllipse(centre, radius + 1.0, radius + 1.0);
    recess(canvas, hole, QColor(10, 10, 11), 1.2);

    QPainterPath head;
    head.addEllipse(centre, radius, radius);
    QLinearGradient steel(centre.x(), centre.y() - radius, centre.x(), centre.y() + radius);
    steel.setColorAt(0.0, QColor(112, 115, 118));
    steel.setColorAt(1.0, QColor(46, 48, 50));
    canvas.painter().fillPath(head, steel);

    QPainter& painter = canvas.painter();
    painter.save();
    painter.translate(centre);
    painter.rotate(turn);
    painter.fillRect(QRectF(-radius * 0.62, -0.6, radius * 1.24, 1.2), QColor(12, 12, 13));
    painter.fillRect(QRectF(-0.6, -radius * 0.62, 1.2, radius * 1.24), QColor(12, 12, 13));
    painter.restore();
}

} // namespace kestrel::artwork
