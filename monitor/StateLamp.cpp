#include "monitor/StateLamp.h"

#include "monitor/ActivityColours.h"

#include <QPainter>
#include <QPainterPath>

namespace kestrel {

namespace {
constexpr int Side = 22;

void drawDisc(QPainter& painter, const QColor& colour)
{
    QRadialGradient glow({ Side / 2.0, Side / 2.0 }, Side / 2.0);
    QColor halo = colour;
    halo.setAlphaF(0.35F);
    glow.setColorAt(0, halo);
    halo.setAlphaF(0);
    glow.setColorAt(1, halo);
    painter.fillRect(QRectF(0, 0, Side, Side), glow);
    QRadialGradient light({ Side / 2.0 - 1.5, Side / 2.0 - 2 }, 7);
    light.setColorAt(0, colour.lighter(135));
    light.setColorAt(1, colour);
    painter.setBrush(light);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(QPointF(Side / 2.0, Side / 2.0), 6, 6);
}

void drawWarning(QPainter& painter, const QColor& colour, const QColor& ground)
{
    QPainterPath triangle;
    triangle.moveTo(11, 3);
    triangle.lineTo(20, 18.5);
    triangle.lineTo(2, 18.5);
    triangle.closeSubpath();
    painter.setPen(QPen(colour, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(colour);
    painter.drawPath(triangle);
    painter.setPen(QPen(ground, 2, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(11, 8.5), QPointF(11, 12.5));
    painter.drawPoint(QPointF(11, 16));
}
} // namespace

StateLamp::StateLamp(QWidget* parent)
    : QWidget(parent)
{
    setFixedSize(Side, Side);
}

void StateLamp::setState(State state)
{
    if (state == m_state)
        return;
    m_state = state;
    update();
}

void StateLamp::paintEvent(QPaintEvent*)
{
    const ActivityColours& colours = ActivityColours::of(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    switch (m_state) {
    case State::Waiting:
        painter.setPen(QPen(colours.dim, 2));
        painter.drawEllipse(QPointF(Side / 2.0, Side / 2.0), 5.5, 5.5);
        break;
    case State::Well:
        drawDisc(painter, colours.good);
        break;
    case State::Wrong:
        drawWarning(painter, colours.warning, colours.headTop);
        break;
    }
}

} // namespace kestrel
