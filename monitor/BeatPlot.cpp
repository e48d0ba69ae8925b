#include "monitor/BeatPlot.h"

#include "monitor/ActivityColours.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace kestrel {

namespace {
using Milliseconds = std::chrono::duration<double, std::milli>;

double deviation(LinkHealth::Duration interval)
{
    return Milliseconds(interval - LinkHealth::BeatPeriod).count();
}

// The next of 2, 5, 10, 20, 50 … ms, so that the scale changes rarely.
double rangeOf(const std::vector<LinkHealth::Duration>& intervals)
{
    double most = 0;
    for (const auto interval : intervals) {
        if (!LinkHealth::isGap(interval))
            most = std::max(most, std::abs(deviation(interval)));
    }
    double range = 2;
    for (int step = 0; range < most; ++step)
        range *= step % 3 == 0 ? 2.5 : 2;
    return range;
}

QString milliseconds(double value)
{
    return QString::number(value, 'f', value < 10 ? 1 : 0) + QStringLiteral(" ms");
}
} // namespace

BeatPlot::BeatPlot(const LinkHealth& health, QWidget* parent)
    : QWidget(parent)
    , m_health(health)
{
    setFixedSize(264, 84);
}

void BeatPlot::refresh()
{
    if (std::exchange(m_shownBeats, m_health.counts().beats) != m_health.counts().beats)
        update();
}

QString BeatPlot::jitterText() const
{
    const auto jitter = m_health.jitter();
    return jitter ? milliseconds(Milliseconds(*jitter).count()) : QStringLiteral("–");
}

void BeatPlot::paintEvent(QPaintEvent*)
{
    const ActivityColours& colours = ActivityColours::of(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF glass = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QLinearGradient ground(glass.topLeft(), glass.bottomLeft());
    ground.setColorAt(0, colours.display.darker(135));
    ground.setColorAt(0.2, colours.display);
    ground.setColorAt(1, colours.display.darker(112));
    painter.setPen(QPen(QColor(0, 0, 0, 190), 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(glass, 5, 5);

    const auto intervals = m_health.intervals();
    const QRectF plot = glass.adjusted(8, 24, -8, -20);
    const double range = rangeOf(intervals);
    drawScale(painter, plot, range);
    drawBeats(painter, plot, range);
}

void BeatPlot::drawScale(QPainter& painter, const QRectF& plot, double range) const
{
    const ActivityColours& colours = ActivityColours::of(palette());
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.75);
    painter.setFont(small);
    painter.setPen(QPen(colours.displayLine, 1));
    const double middle = std::floor(plot.center().y()) + 0.5;
    painter.drawLine(QPointF(plot.left(), middle), QPointF(plot.right(), middle));
    for (int minute = 0; minute <= 5; ++minute) {
        const double x = std::floor(plot.left() + plot.width() * minute / 5) + 0.5;
        painter.drawLine(QPointF(x, plot.bottom() + 1), QPointF(x, plot.bottom() + 4));
    }
    painter.setPen(colours.displayText);
    const QRectF top = QRectF(plot.left(), 5, plot.width(), 16);
    painter.drawText(top, Qt::AlignLeft, QStringLiteral("Jitter %1").arg(jitterText()));
    painter.drawText(top, Qt::AlignRight, QStringLiteral("± %1 ms").arg(range));
    const QRectF below(plot.left(), plot.bottom() + 3, plot.width(), 16);
    painter.drawText(below, Qt::AlignLeft, QStringLiteral("5 min"));
    painter.drawText(below, Qt::AlignRight, QStringLiteral("now"));
}

void BeatPlot::drawBeats(QPainter& painter, const QRectF& plot, double range) const
{
    const ActivityColours& colours = ActivityColours::of(palette());
    const auto intervals = m_health.intervals();
    const double step = plot.width() / static_cast<double>(LinkHealth::KeptIntervals - 1);
    const double middle = std::floor(plot.center().y()) + 0.5;
    double x = plot.right() - step * static_cast<double>(intervals.size());
    QPolygonF beats;
    for (const auto interval : intervals) {
        x += step;
        if (LinkHealth::isGap(interval)) {
            painter.fillRect(QRectF(x - 1, plot.top(), 2, plot.height()), colours.displayWarning);
            continue;
        }
        beats << QPointF(x, middle - deviation(interval) / range * plot.height() / 2);
    }
    painter.setPen(QPen(colours.displayText, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(beats);
    if (!beats.isEmpty()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(colours.displayText);
        painter.drawEllipse(beats.last(), 2.4, 2.4);
    }
}

} // namespace kestrel
