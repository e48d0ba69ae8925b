#include "tools/artwork/KnobStrip.h"

#include "tools/artwork/Canvas.h"
#include "tools/artwork/Light.h"

#include <cmath>
#include <cstdlib>
#include <numbers>

namespace kestrel::artwork {

namespace {

constexpr int frameSize = 67;
constexpr int frameCount = 128;
constexpr int ringLamps = 11;
constexpr int middleLamp = 6;
constexpr double degreesBetweenLamps = 27.0;

constexpr QPointF centre(33.5, 31.5);
constexpr double ringRadius = 27.0;
constexpr double lampRadius = 2.1;
constexpr double skirtRadius = 20.5;
constexpr double capRadius = 16.0;

constexpr QColor litCore(255, 224, 158);
constexpr QColor litEdge(255, 152, 40);
constexpr QColor unlitLamp(78, 58, 38);
constexpr QColor lowerCore(255, 178, 144);
constexpr QColor lowerEdge(255, 86, 48);

// `degrees` runs clockwise from twelve o'clock.
QPointF onCircle(double degrees, double radius)
{
    const double angle = degrees * std::numbers::pi / 180.0;
    return centre + QPointF(std::sin(angle), -std::cos(angle)) * radius;
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
    const int last = modeOf(value) == 3 ? middleLamp : ringLamps;
    const int step = std::max(positionOf(value), 1) - 1;
    return (2.0 * step / (last - 1) - 1.0) * degreesBetweenLamps * (ringLamps - middleLamp);
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
        painter.fillPath(smaller.map(lamp), unlitLamp);
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
    return roundedRect(QRectF(centre.x() - 6, 58.5, 12, 3.6), 1.8);
}

void drawRing(Canvas& canvas, int value)
{
    for (int lamp = 1; lamp <= ringLamps; ++lamp) {
        const QPointF at = onCircle((lamp - middleLamp) * degreesBetweenLamps, ringRadius);
        drawLamp(canvas, disc(at, lampRadius), isRingLampLit(value, lamp), litCore, litEdge);
    }
    drawLamp(canvas, lowerLamp(), isLowerLampLit(value), lowerCore, lowerEdge);
}

void drawSkirt(Canvas& canvas)
{
    QPainter& painter = canvas.painter();
    castSoft(canvas, disc(centre, skirtRadius), QPointF(0, 3.0), 4.0, QColor(0, 0, 0, 200));
    QLinearGradient side(0, centre.y() - skirtRadius, 0, centre.y() + skirtRadius);
    side.setColorAt(0.0, QColor(86, 89, 93));
    side.setColorAt(0.5, QColor(40, 42, 45));
    side.setColorAt(1.0, QColor(16, 17, 18));
    painter.fillPath(disc(centre, skirtRadius), side);
    QPen groove(QColor(0, 0, 0, 150), 0.9, Qt::SolidLine, Qt::FlatCap);
    painter.setPen(groove);
    for (int i = 0; i < 40; ++i)
        painter.drawLine(onCircle(9.0 * i, capRadius), onCircle(9.0 * i, skirtRadius - 0.6));
    painter.setPen(Qt::NoPen);
}

void drawCap(Canvas& canvas)
{
    QPainter& painter = canvas.painter();
    painter.fillPath(disc(centre, capRadius + 0.9), QColor(10, 10, 11));
    QLinearGradient rim(0, centre.y() - capRadius, 0, centre.y() + capRadius);
    rim.setColorAt(0.0, QColor(150, 154, 158));
    rim.setColorAt(0.35, QColor(70, 73, 76));
    rim.setColorAt(1.0, QColor(30, 31, 33));
    painter.fillPath(disc(centre, capRadius), rim);

    // Turned metal reflects two opposite fans of light.
    QConicalGradient turned(centre, 90.0);
    for (const double at : { 0.0, 0.5, 1.0 })
        turned.setColorAt(at, QColor(84, 87, 91));
    for (const double at : { 0.13, 0.37, 0.63, 0.87 })
        turned.setColorAt(at, QColor(48, 50, 53));
    for (const double at : { 0.25, 0.75 })
        turned.setColorAt(at, QColor(62, 64, 68));
    painter.fillPath(disc(centre, capRadius - 1.0), turned);
    QLinearGradient fall(0, centre.y() - capRadius, 0, centre.y() + capRadius);
    fall.setColorAt(0.0, QColor(255, 255, 255, 18));
    fall.setColorAt(1.0, QColor(0, 0, 0, 90));
    painter.fillPath(disc(centre, capRadius - 1.0), fall);
}

void drawPointer(Canvas& canvas, double degrees)
{
    QPainter& painter = canvas.painter();
    const QLineF line(onCircle(degrees, 7.0), onCircle(degrees, capRadius - 2.2));
    painter.setPen(QPen(QColor(0, 0, 0, 150), 3.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(line);
    painter.setPen(QPen(QColor(236, 236, 230), 2.2, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(line);
    painter.setPen(Qt::NoPen);
}

QImage drawBody(int scale)
{
    Canvas body(QSize(frameSize, frameSize), scale, Canvas::Backing::Transparent);
    drawSkirt(body);
    drawCap(body);
    return body.take();
}

QImage drawFrame(int value, const QImage& body, int scale)
{
    Canvas frame(QSize(frameSize, frameSize), scale, Canvas::Backing::Transparent);
    drawRing(frame, value);
    frame.painter().drawImage(QRectF(0, 0, frameSize, frameSize), body, QRectF(body.rect()));
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
        return std::min(position, middleLamp) <= lamp && lamp <= std::max(position, middleLamp);
    case 2:
        return lamp <= position;
    default:
        return std::abs(lamp - middleLamp) <= position - 1;
    }
}

QImage drawKnobStrip(int scale)
{
    const QImage body = drawBody(scale);
    Canvas strip(QSize(frameSize, frameSize * frameCount), scale, Canvas::Backing::Transparent);
    for (int value = 0; value < frameCount; ++value) {
        if (isNeverDrawn(value))
            continue;
        const QImage frame = drawFrame(value, body, scale);
        strip.painter().drawImage(
            QRectF(0, value * frameSize, frameSize, frameSize), frame, QRectF(frame.rect()));
    }
    return strip.take();
}

} // namespace kestrel::artwork
