#include "artwork/LampKeys.h"

#include "artwork/Canvas.h"
#include "artwork/KeyCap.h"
#include "artwork/Light.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace kestrel::artwork {

namespace {

constexpr int KeyFrameSize = 67;
constexpr QRectF KeyRect(8.5, 39.0, 50.0, 22.0);

// Where the light of a key falls.
constexpr QRect LitAround(-26, 16, 119, 86);

// Light of a rectangle, seen through something that softens it: `softness` is the standard
// deviation of the blur, in units. One lies around the key; a wider one reaches the ends of the
// longest label.
struct Spill {
    QRectF source;
    double softness;
    double strength;
};
constexpr std::array<Spill, 2> Spills { { { { 10.5, 40.0, 46.0, 20.0 }, 4.5, 0.66 },
    { { -4.5, 44.0, 76.0, 35.0 }, 10.0, 0.5 } } };

struct KeyPaint {
    QColor unlitTop;
    QColor unlitBottom;
    QColor litTop;
    QColor litBottom;
    QColor hot;
    QColor halo;
    QColor spill;
};

// Eyes that cannot tell red from green still tell these apart: the green is bluish and the amber
// yellow and bright, the red is dark. What the red one lights looks warm with some amber in it, and
// would look pink without.
KeyPaint paintOf(LampColour colour)
{
    switch (colour) {
    case LampColour::Green:
        return { QColor(38, 92, 74), QColor(20, 58, 46), QColor(120, 246, 206),
            QColor(20, 190, 146), QColor(206, 255, 246), QColor(40, 230, 176, 150),
            QColor(40, 230, 176) };
    case LampColour::Red:
        return { QColor(112, 34, 32), QColor(70, 18, 17), QColor(246, 60, 46), QColor(190, 16, 16),
            QColor(255, 124, 92), QColor(255, 52, 30, 160), QColor(255, 80, 8) };
    case LampColour::Orange:
        break;
    }
    return { QColor(116, 84, 34), QColor(76, 52, 18), QColor(255, 202, 66), QColor(248, 156, 6),
        QColor(255, 240, 176), QColor(255, 180, 40, 150), QColor(255, 172, 40) };
}

// How much of a blurred strip of light there is at each pixel along it.
std::vector<double> along(
    double from, double to, double softness, double start, double end, int pixels)
{
    std::vector<double> share(static_cast<std::size_t>(pixels));
    const double reach = softness * std::numbers::sqrt2;
    for (int i = 0; i < pixels; ++i) {
        const double at = start + (end - start) * (i + 0.5) / pixels;
        share[static_cast<std::size_t>(i)]
            = (std::erf((at - from) / reach) - std::erf((at - to) / reach)) / 2.0;
    }
    return share;
}

void drawUnlit(Canvas& canvas, const QRectF& rect, const KeyPaint& paint)
{
    drawKeyCap(canvas,
        { .rect = rect,
            .top = paint.unlitTop,
            .bottom = paint.unlitBottom,
            .shine = QColor(255, 255, 255, 46) });
}

void drawLit(Canvas& canvas, const QRectF& rect, const KeyPaint& paint)
{
    castSoft(canvas, roundedRect(rect, 5.0), QPointF(0, 0), 3.0, paint.halo);
    drawKeyCap(canvas,
        { .rect = rect,
            .top = paint.litTop,
            .bottom = paint.litBottom,
            .shine = QColor(255, 255, 255, 140),
            .bezel = paint.unlitBottom.darker(160) });
    const QRectF face = rect.adjusted(1.6, 1.6, -1.6, -1.6);
    QPainter& painter = canvas.painter();
    painter.save();
    painter.translate(face.center());
    painter.scale(face.width() / 2.0, face.height() / 2.0);
    QRadialGradient bulb(QPointF(0, 0), 1.0);
    QColor clear = paint.hot;
    clear.setAlpha(0);
    bulb.setColorAt(0.0, paint.hot);
    bulb.setColorAt(1.0, clear);
    painter.setBrush(bulb);
    painter.drawEllipse(QPointF(0, 0), 1.0, 1.0);
    painter.setBrush(Qt::NoBrush);
    painter.restore();
}

} // namespace

LampKeys::LampKeys(LampColour colour)
    : FrameStrip({ KeyFrameSize, KeyFrameSize }, 2)
    , m_colour(colour)
{
}

void LampKeys::paintFrame(Canvas& canvas, int index) const
{
    const KeyPaint paint = paintOf(m_colour);
    if (index == 0)
        drawUnlit(canvas, KeyRect, paint);
    else
        drawLit(canvas, KeyRect, paint);
}

QRectF LampKeys::paintedArea(const QRect& source) const
{
    return KeyRect.translated(source.topLeft());
}

QRect LampKeys::lightArea(const QRect& source) const
{
    return LitAround.translated(source.topLeft());
}

QImage LampKeys::drawLight(const QRect& source, QSize pixels) const
{
    if (frameAt(source) == 0)
        return {};
    const QRectF area(LitAround);
    std::vector<double> sums(
        static_cast<std::size_t>(pixels.width()) * static_cast<std::size_t>(pixels.height()));
    for (const Spill& spill : Spills) {
        const auto across = along(spill.source.left(), spill.source.right(), spill.softness,
            area.left(), area.right(), pixels.width());
        const auto down = along(spill.source.top(), spill.source.bottom(), spill.softness,
            area.top(), area.bottom(), pixels.height());
        auto sum = sums.begin();
        for (const double row : down) {
            for (const double column : across)
                *sum++ += spill.strength * row * column;
        }
    }
    const QColor light = paintOf(m_colour).spill;
    QImage image(pixels, QImage::Format_RGB32);
    auto sum = sums.cbegin();
    for (int y = 0; y < pixels.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < pixels.width(); ++x) {
            const double strength = std::min(1.0, *sum++);
            line[x] = qRgb(qRound(light.red() * strength), qRound(light.green() * strength),
                qRound(light.blue() * strength));
        }
    }
    return image;
}

} // namespace kestrel::artwork
