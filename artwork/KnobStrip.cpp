#include "artwork/KnobStrip.h"

#include "artwork/Canvas.h"
#include "artwork/Light.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace kestrel::artwork {

namespace {

constexpr int KnobFrameSize = 67;
constexpr int KnobFrameCount = 128;
constexpr int RingLamps = 11;
constexpr int MiddleLamp = 6;
constexpr double DegreesBetweenLamps = 27.0;

constexpr QPointF Centre(33.5, 33.0);
constexpr double RingRadius = 28.2;
constexpr double LampRadius = 2.8;
constexpr double HaloRadius = 4.7; // the outermost light of the ring ends at the edge of the frame
constexpr double SkirtRadius = 20.5;
constexpr double CapRadius = 16.0;

struct KnobLampPaint {
    QColor core;
    QColor edge;
    QColor lens; // when unlit
};
constexpr KnobLampPaint RingPaint { QColor(255, 236, 184), QColor(255, 164, 44),
    QColor(112, 82, 50) };
constexpr KnobLampPaint LowerPaint { QColor(255, 104, 48), QColor(236, 36, 18),
    QColor(112, 48, 38) };

// `degrees` runs clockwise from twelve o'clock.
QPointF onCircle(double degrees, double radius)
{
    const double angle = degrees * std::numbers::pi / 180.0;
    return Centre + QPointF(std::sin(angle), -std::cos(angle)) * radius;
}

int positionOf(int value)
{
    return value & 0x0F;
}
int modeOf(int value)
{
    return value >> 4 & 0x03;
}
bool isLowerLampLit(int value)
{
    return (value & 0x40) != 0;
}

// Values of the both-sides mode cover the range in six steps, the others in eleven.
double pointerDegrees(int value)
{
    const int last = modeOf(value) == 3 ? MiddleLamp : RingLamps;
    const int step = std::max(positionOf(value), 1) - 1;
    return (2.0 * step / (last - 1) - 1.0) * DegreesBetweenLamps * (RingLamps - MiddleLamp);
}

// The light around a lamp that is `length` units wide and as high as the lamps of the ring.
void drawHalo(QPainter& painter, QPointF centre, double length, QColor colour)
{
    const double radius = HaloRadius + length / 2.0 - LampRadius;
    painter.save();
    painter.translate(centre);
    painter.scale(radius, HaloRadius);
    QRadialGradient light(QPointF(0, 0), 1.0);
    colour.setAlpha(150);
    light.setColorAt(0.0, colour);
    colour.setAlpha(96);
    light.setColorAt(0.55, colour);
    colour.setAlpha(0);
    light.setColorAt(1.0, colour);
    painter.fillRect(QRectF(-1, -1, 2, 2), light);
    painter.restore();
}

QPainterPath shrunk(const QPainterPath& path, double factor)
{
    const QPointF middle = path.boundingRect().center();
    QTransform smaller;
    smaller.translate(middle.x(), middle.y());
    smaller.scale(factor, factor);
    smaller.translate(-middle.x(), -middle.y());
    return smaller.map(path);
}

// A lens in a dark ring. Unlit, it is seen by the light of the room on its upper edge.
void drawLamp(Canvas& canvas, const QPainterPath& lamp, bool lit, const KnobLampPaint& paint)
{
    QPainter& painter = canvas.painter();
    const QRectF box = lamp.boundingRect();
    if (lit)
        drawHalo(painter, box.center(), box.width(), paint.edge);
    painter.fillPath(lamp.translated(0, 0.6), QColor(255, 255, 255, 34));
    painter.fillPath(lamp, QColor(6, 6, 7));
    const QPainterPath lens = shrunk(lamp, lit ? 0.94 : 0.76);
    if (lit) {
        QRadialGradient light(box.center(), std::max(box.width(), box.height()) / 2.0);
        light.setColorAt(0.0, paint.core);
        light.setColorAt(0.5, paint.core);
        light.setColorAt(1.0, paint.edge);
        painter.fillPath(lens, light);
        return;
    }
    QLinearGradient glass(box.topLeft(), box.bottomLeft());
    glass.setColorAt(0.0, paint.lens.lighter(135));
    glass.setColorAt(1.0, paint.lens.darker(150));
    painter.fillPath(lens, glass);
}

QPainterPath lowerLamp()
{
    return roundedRect(QRectF(Centre.x() - 6.5, 58.9, 13, 4.2), 2.1);
}

void drawRing(Canvas& canvas, int value)
{
    for (int lamp = 1; lamp <= RingLamps; ++lamp) {
        const QPointF at = onCircle((lamp - MiddleLamp) * DegreesBetweenLamps, RingRadius);
        drawLamp(canvas, disc(at, LampRadius), isRingLampLit(value, lamp), RingPaint);
    }
    drawLamp(canvas, lowerLamp(), isLowerLampLit(value), LowerPaint);
}

void drawSkirt(Canvas& canvas)
{
    QPainter& painter = canvas.painter();
    castSoft(canvas, disc(Centre, SkirtRadius), QPointF(0, 3.0), 4.0, QColor(0, 0, 0, 200));
    QLinearGradient side(0, Centre.y() - SkirtRadius, 0, Centre.y() + SkirtRadius);
    side.setColorAt(0.0, QColor(86, 89, 93));
    side.setColorAt(0.5, QColor(40, 42, 45));
    side.setColorAt(1.0, QColor(16, 17, 18));
    painter.fillPath(disc(Centre, SkirtRadius), side);
    QPen groove(QColor(0, 0, 0, 150), 0.9, Qt::SolidLine, Qt::FlatCap);
    painter.setPen(groove);
    for (int i = 0; i < 40; ++i)
        painter.drawLine(onCircle(9.0 * i, CapRadius), onCircle(9.0 * i, SkirtRadius - 0.6));
    painter.setPen(Qt::NoPen);
}

void drawCap(Canvas& canvas)
{
    QPainter& painter = canvas.painter();
    painter.fillPath(disc(Centre, CapRadius + 0.9), QColor(10, 10, 11));
    QLinearGradient rim(0, Centre.y() - CapRadius, 0, Centre.y() + CapRadius);
    rim.setColorAt(0.0, QColor(150, 154, 158));
    rim.setColorAt(0.35, QColor(70, 73, 76));
    rim.setColorAt(1.0, QColor(30, 31, 33));
    painter.fillPath(disc(Centre, CapRadius), rim);

    // Turned metal reflects two opposite fans of light.
    QConicalGradient turned(Centre, 90.0);
    for (const double at : { 0.0, 0.5, 1.0 })
        turned.setColorAt(at, QColor(84, 87, 91));
    for (const double at : { 0.13, 0.37, 0.63, 0.87 })
        turned.setColorAt(at, QColor(48, 50, 53));
    for (const double at : { 0.25, 0.75 })
        turned.setColorAt(at, QColor(62, 64, 68));
    painter.fillPath(disc(Centre, CapRadius - 1.0), turned);
    QLinearGradient fall(0, Centre.y() - CapRadius, 0, Centre.y() + CapRadius);
    fall.setColorAt(0.0, QColor(255, 255, 255, 18));
    fall.setColorAt(1.0, QColor(0, 0, 0, 90));
    painter.fillPath(disc(Centre, CapRadius - 1.0), fall);
}

void drawPointer(Canvas& canvas, double degrees)
{
    QPainter& painter = canvas.painter();
    const QLineF line(onCircle(degrees, 7.0), onCircle(degrees, CapRadius - 2.2));
    painter.setPen(QPen(QColor(0, 0, 0, 150), 3.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(line);
    painter.setPen(QPen(QColor(236, 236, 230), 2.2, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(line);
    painter.setPen(Qt::NoPen);
}

} // namespace

bool isRingLampLit(int value, int lamp)
{
    const int position = positionOf(value);
    if (position == 0)
        return false;
    switch (modeOf(value)) {
    case 0:
        return lamp == position;
    case 1:
        return std::min(position, MiddleLamp) <= lamp && lamp <= std::max(position, MiddleLamp);
    case 2:
        return lamp <= position;
    default:
        return std::abs(lamp - MiddleLamp) <= position - 1;
    }
}

KnobStrip::KnobStrip()
    : FrameStrip({ KnobFrameSize, KnobFrameSize }, KnobFrameCount)
{
}

QRectF KnobStrip::paintedArea(const QRect& source) const
{
    return disc(Centre, RingRadius + LampRadius)
        .united(lowerLamp())
        .boundingRect()
        .translated(source.topLeft());
}

void KnobStrip::paintFrame(Canvas& canvas, int value) const
{
    drawRing(canvas, value);
    drawSkirt(canvas);
    drawCap(canvas);
    drawPointer(canvas, pointerDegrees(value));
}

} // namespace kestrel::artwork
