#include "tools/artwork/KnobStrip.h"

#include "tools/artwork/Canvas.h"
#include "tools/artwork/Light.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

namespace kestrel::artwork {

namespace {

constexpr int FrameSize = 67;
constexpr int FrameCount = 128;
constexpr int RingLamps = 11;
constexpr int MiddleLamp = 6;
constexpr double DegreesBetweenLamps = 27.0;

constexpr QPointF Centre(33.5, 31.5);
constexpr double RingRadius = 27.0;
constexpr double LampRadius = 2.1;
constexpr double SkirtRadius = 20.5;
constexpr double CapRadius = 16.0;

constexpr QColor LitCore(255, 224, 158);
constexpr QColor LitEdge(255, 152, 40);
constexpr QColor UnlitLamp(78, 58, 38);
constexpr QColor LowerCore(255, 178, 144);
constexpr QColor LowerEdge(255, 86, 48);

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

// The program draws no knob for these values; their frames stay empty.
bool isNeverDrawn(int value)
{
    return (value & 0x0C) == 0x0C || (value >= 55 && value <= 63) || value > 118;
}

void drawLamp(Canvas& canvas, const QPainterPath& lamp, bool lit, QColor core, QColor edge)
{
    QPainter& painter = canvas.painter();
    const QRectF box = lamp.boundingRect();
    painter.fillPath(lamp.translated(0, 0.7), QColor(255, 255, 255, 26));
    if (!lit) {
        painter.fillPath(lamp, QColor(8, 8, 8));
        QTransform smaller;
        smaller.translate(box.center().x(), box.center().y());
        smaller.scale(0.72, 0.72);
        smaller.translate(-box.center().x(), -box.center().y());
        painter.fillPath(smaller.map(lamp), UnlitLamp);
        return;
    }
    QColor halo = edge;
    halo.setAlpha(190);
    castSoft(canvas, lamp, QPointF(0, 0), 2.2, halo);
    QRadialGradient light(box.center(), std::max(box.width(), box.height()) / 2.0);
    light.setColorAt(0.0, core);
    light.setColorAt(0.55, core);
    light.setColorAt(1.0, edge);
    painter.fillPath(lamp, light);
}

QPainterPath lowerLamp()
{
    return roundedRect(QRectF(Centre.x() - 6, 58.5, 12, 3.6), 1.8);
}

void drawRing(Canvas& canvas, int value)
{
    for (int lamp = 1; lamp <= RingLamps; ++lamp) {
        const QPointF at = onCircle((lamp - MiddleLamp) * DegreesBetweenLamps, RingRadius);
        drawLamp(canvas, disc(at, LampRadius), isRingLampLit(value, lamp), LitCore, LitEdge);
    }
    drawLamp(canvas, lowerLamp(), isLowerLampLit(value), LowerCore, LowerEdge);
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

QImage drawBody(int scale)
{
    Canvas body(QSize(FrameSize, FrameSize), scale, Canvas::Backing::Transparent);
    drawSkirt(body);
    drawCap(body);
    return body.take();
}

QImage drawFrame(int value, const QImage& body, int scale)
{
    Canvas frame(QSize(FrameSize, FrameSize), scale, Canvas::Backing::Transparent);
    drawRing(frame, value);
    frame.painter().drawImage(QRectF(0, 0, FrameSize, FrameSize), body, QRectF(body.rect()));
    drawPointer(frame, pointerDegrees(value));
    return frame.take();
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

QImage drawKnobStrip(int scale)
{
    const QImage body = drawBody(scale);
    Canvas strip(QSize(FrameSize, FrameSize * FrameCount), scale, Canvas::Backing::Transparent);
    for (int value = 0; value < FrameCount; ++value) {
        if (isNeverDrawn(value))
            continue;
        const QImage frame = drawFrame(value, body, scale);
        strip.painter().drawImage(
            QRectF(0, value * FrameSize, FrameSize, FrameSize), frame, QRectF(frame.rect()));
    }
    return strip.take();
}

} // namespace kestrel::artwork
