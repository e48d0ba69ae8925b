#include "artwork/LampKeys.h"

#include "artwork/Canvas.h"
#include "artwork/KeyCap.h"
#include "artwork/Light.h"

#include <array>
#include <utility>

namespace kestrel::artwork {

namespace {

constexpr int KeyFrameSize = 67;
constexpr QRectF KeyRect(8.5, 39.0, 50.0, 22.0);

// Where the light of a key falls: around the key, and evenly on its label, up to the ends of the
// longest one. How strong it is from the middle of each ellipse to its edge.
constexpr QRect LitAround(-14, 20, 95, 70);
constexpr QRectF AroundKey(-9, 20, 85, 64);
constexpr QRectF OnLabel(-13.5, 60, 94, 30);
using Profile = std::array<std::pair<double, float>, 5>; // distance and strength, both 0 to 1
constexpr Profile KeyLight { { { 0.0, 0.78F }, { 0.42, 0.66F }, { 0.7, 0.34F }, { 0.86, 0.12F },
    { 1.0, 0.0F } } };
constexpr Profile LabelLight { { { 0.0, 0.34F }, { 0.5, 0.32F }, { 0.75, 0.25F }, { 0.9, 0.08F },
    { 1.0, 0.0F } } };

struct KeyPaint {
    QColor unlitTop;
    QColor unlitBottom;
    QColor litTop;
    QColor litBottom;
    QColor hot;
    QColor halo;
};

// Eyes that cannot tell red from green still tell these apart: the green is bluish and the amber
// yellow and bright, the red is dark.
KeyPaint paintOf(LampColour colour)
{
    switch (colour) {
    case LampColour::Green:
        return { QColor(38, 92, 74), QColor(20, 58, 46), QColor(120, 246, 206),
            QColor(20, 190, 146), QColor(206, 255, 246), QColor(40, 230, 176, 150) };
    case LampColour::Red:
        return { QColor(112, 34, 36), QColor(70, 18, 20), QColor(246, 66, 60), QColor(190, 16, 26),
            QColor(255, 128, 112), QColor(255, 44, 40, 160) };
    case LampColour::Orange:
        break;
    }
    return { QColor(116, 84, 34), QColor(76, 52, 18), QColor(255, 202, 66), QColor(248, 156, 6),
        QColor(255, 240, 176), QColor(255, 180, 40, 150) };
}

// Lights the ellipse within `area`.
void shine(QPainter& painter, const QRectF& area, const Profile& profile, QColor light)
{
    QRadialGradient fall(QPointF(0, 0), 1.0);
    for (const auto& [distance, strength] : profile)
        fall.setColorAt(distance,
            QColor::fromRgbF(
                light.redF() * strength, light.greenF() * strength, light.blueF() * strength));
    painter.save();
    painter.translate(area.center());
    painter.scale(area.width() / 2.0, area.height() / 2.0);
    painter.fillRect(QRectF(-1, -1, 2, 2), fall);
    painter.restore();
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
    Canvas canvas(QRectF(LitAround), pixels, Canvas::Backing::Opaque);
    const QColor light = paintOf(m_colour).halo;
    shine(canvas.painter(), AroundKey, KeyLight, light);
    canvas.painter().setCompositionMode(QPainter::CompositionMode_Lighten);
    shine(canvas.painter(), OnLabel, LabelLight, light);
    return canvas.takeToPaint();
}

} // namespace kestrel::artwork
