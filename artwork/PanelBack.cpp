#include "artwork/PanelBack.h"

#include "artwork/BrushedMetal.h"
#include "artwork/Canvas.h"
#include "artwork/DisplayGlass.h"
#include "artwork/Emblem.h"
#include "artwork/Engraving.h"
#include "artwork/Light.h"
#include "artwork/Wordmark.h"

#include <array>

namespace kestrel::artwork {

namespace {

constexpr int Width = 782;
constexpr int Height = 220;

// The distance from the left edge of a knob or lamp frame to its middle.
constexpr double HalfFrame = 33.5;
constexpr std::array<double, 4> ChannelLefts { 309, 406, 503, 600 };
// The rules of the left third reach from the outer edge of the first key to that of the third.
constexpr double LeftRule = 26.5;
constexpr double RuleLength = 244;

constexpr double KeyTop = Height - 66.0;
constexpr double LabelTop = Height - 33.0;
constexpr QPointF KnobOffset(HalfFrame, Height - 73.0 - 67.0 + 33.0);

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

// The wordmark fills the width of the rules below it, so that all of the left third has one
// measure.
void drawNamePlate(Canvas& canvas)
{
    constexpr QRectF Place(LeftRule, 34, RuleLength, 32);
    engraveShape(canvas, zentaWordmark(Place), EngravedGrey);
    engraveHorizontal(canvas, LeftRule, 86, RuleLength);
    engrave(canvas, QStringLiteral("PLUG-IN PANEL"), QPointF(LeftRule + 1, 97),
        { .tracking = 4.0, .anchor = Lettering::Anchor::Left });
    const Lettering quiet { .tracking = 4.0, .paint = QColor(128, 132, 134) };
    const QString product = QStringLiteral("KESTREL");
    engrave(canvas, product,
        QPointF(LeftRule + RuleLength - 1 - engravedWidth(product, quiet) / 2.0, 97), quiet);
}

void drawRightColumn(Canvas& canvas)
{
    engraveShape(canvas, featheredKestrelMark(QPointF(730.5, 66), 51), EngravedGrey);
}

} // namespace

QSize PanelBack::size() const
{
    return { Width, Height };
}

QImage PanelBack::draw(const QRect& source, QSize pixels) const
{
    Canvas canvas(QRectF(source), pixels, Canvas::Backing::Opaque);
    lay(canvas, { .top = QColor(38, 40, 43), .bottom = QColor(24, 25, 27), .seed = 11 });
    bevelEdge(canvas);

    drawDisplayGlass(canvas);
    drawChannels(canvas);
    drawSideKey(canvas, 18, QStringLiteral("ASSIGN"));
    drawSideKey(canvas, 115, QStringLiteral("COMPARE"));
    drawSideKey(canvas, 212, QStringLiteral("BYPASS"));
    drawSideKey(canvas, 697, QStringLiteral("INSERT/PARAM"));

    drawNamePlate(canvas);
    drawRightColumn(canvas);
    drawTitledRule(canvas, LeftRule, 138, RuleLength, QStringLiteral("FUNCTION"));
    drawTitledRule(canvas, 705, 138, 51, QStringLiteral("VIEW"));
    for (const QPointF at :
        { QPointF(11, 11), QPointF(771, 11), QPointF(11, 209), QPointF(771, 209) })
        driveScrew(canvas, at, 3.6, at.x() * 0.7 + at.y());
    return canvas.takeToPaint();
}

} // namespace kestrel::artwork
