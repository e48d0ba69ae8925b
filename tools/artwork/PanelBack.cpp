#include "tools/artwork/PanelBack.h"

#include "tools/artwork/BrushedMetal.h"
#include "tools/artwork/Canvas.h"
#include "tools/artwork/Emblem.h"
#include "tools/artwork/Engraving.h"
#include "tools/artwork/Light.h"

#include <array>

namespace kestrel::artwork {

namespace {

constexpr int Width = 782;
constexpr int Height = 220;

// The distance from the left edge of a knob or lamp frame to its middle.
constexpr double HalfFrame = 33.5;
constexpr std::array<double, 4> ChannelLefts { 309, 406, 503, 600 };
constexpr double KeyTop = Height - 66.0;
constexpr double LabelTop = Height - 33.0;
constexpr QPointF KnobOffset(HalfFrame, Height - 73.0 - 67.0 + 31.5);

constexpr QRectF DisplayGlass(288, 9, 401, 44);

void drawDisplay(Canvas& canvas)
{
    recess(canvas, roundedRect(DisplayGlass.adjusted(-4, -3, 4, 3), 6), QColor(11, 12, 13), 1.5);

    const QPainterPath glass = roundedRect(DisplayGlass, 3.5);
    QLinearGradient lit(DisplayGlass.topLeft(), DisplayGlass.bottomLeft());
    lit.setColorAt(0.0, QColor(9, 60, 66));
    lit.setColorAt(0.5, QColor(12, 74, 80));
    lit.setColorAt(1.0, QColor(10, 64, 72));
    canvas.painter().fillPath(glass, lit);
    shadeInside(canvas, glass, QPointF(0, 1.5), 4.0, QColor(0, 14, 18, 220));
}

void drawKnobWell(Canvas& canvas, double left)
{
    const QPointF centre(left + KnobOffset.x(), KnobOffset.y());
    recess(canvas, disc(centre, 22.5), QColor(15, 16, 17), 2.0);
}

void drawKeyWell(Canvas& canvas, double left)
{
    const QRectF key(left + 8.5, KeyTop - 1.0, 50, 22);
    recess(canvas, roundedRect(key.adjusted(-2, -2, 2, 2), 6.5), QColor(12, 12, 13), 1.2);
}

// Draws a thin line with a title in a gap.
void drawTitledRule(Canvas& canvas, double x, double y, double length, const QString& title)
{
    const Lettering small { .stroke = 1.0, .tracking = 3.0, .paint = QColor(150, 154, 156) };
    const double gap = engravedWidth(title, small) + 14.0;
    const double arm = (length - gap) / 2.0;
    engraveHorizontal(canvas, x, y, arm);
    engraveHorizontal(canvas, x + length - arm, y, arm);
    engrave(canvas, title, QPointF(x + length / 2.0, y - 3.0), small);
}

void drawChannels(Canvas& canvas)
{
    for (const double left : ChannelLefts) {
        drawKnobWell(canvas, left);
        drawKeyWell(canvas, left);
    }
    for (const double x : { 391.0, 488.0, 585.0 })
        engraveVertical(canvas, x, 82, 120);
    for (std::size_t i = 0; i < ChannelLefts.size(); ++i) {
        const double middle = ChannelLefts[i] + HalfFrame;
        drawTitledRule(canvas, middle - 44, 68, 88, QString::number(i + 1));
        engrave(canvas, QStringLiteral("SELECT %1").arg(i + 1), QPointF(middle, LabelTop));
    }
}

void drawSideKey(Canvas& canvas, double left, const QString& label)
{
    drawKeyWell(canvas, left);
    engrave(canvas, label, QPointF(left + HalfFrame, LabelTop));
}

void drawNamePlate(Canvas& canvas)
{
    engrave(canvas, QStringLiteral("ZENTA"), QPointF(27, 40),
        { .size = 5.0, .stroke = 3.4, .tracking = 3.2, .anchor = Lettering::Anchor::Left });
    engraveHorizontal(canvas, 26, 86, 245);
    engrave(canvas, QStringLiteral("PLUG-IN PANEL"), QPointF(27, 96),
        { .tracking = 4.0, .anchor = Lettering::Anchor::Left });
}

void drawRightColumn(Canvas& canvas)
{
    engraveShape(canvas, kestrelMark(QPointF(730.5, 52), 52), QColor(120, 124, 127));
    engrave(canvas, QStringLiteral("KESTREL"), QPointF(730.5, 96), { .tracking = 3.0 });
}

} // namespace

QImage drawPanelBack(int scale)
{
    Canvas canvas(QSize(Width, Height), scale, Canvas::Backing::Opaque);
    lay(canvas, { .top = QColor(38, 40, 43), .bottom = QColor(24, 25, 27), .seed = 11 });
    bevelEdge(canvas);

    drawDisplay(canvas);
    drawChannels(canvas);
    drawSideKey(canvas, 18, QStringLiteral("ASSIGN"));
    drawSideKey(canvas, 115, QStringLiteral("COMPARE"));
    drawSideKey(canvas, 212, QStringLiteral("BYPASS"));
    drawSideKey(canvas, 697, QStringLiteral("INSERT/PARAM"));

    drawNamePlate(canvas);
    drawRightColumn(canvas);
    drawTitledRule(canvas, 26, 138, 245, QStringLiteral("FUNCTION"));
    drawTitledRule(canvas, 705, 138, 51, QStringLiteral("VIEW"));
    for (const QPointF at :
        { QPointF(11, 11), QPointF(771, 11), QPointF(11, 209), QPointF(771, 209) })
        driveScrew(canvas, at, 3.6, at.x() * 0.7 + at.y());
    return canvas.take();
}

} // namespace kestrel::artwork
