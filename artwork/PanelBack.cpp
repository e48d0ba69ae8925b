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
// Those of the right column are as wide as its key, in whole units.
constexpr double RightRule = 705;
constexpr double RightRuleLength = 51;

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

// Draws a thin line with a title in a gap. Where the title leaves no room for it, there is no line.
void drawTitledRule(Canvas& canvas, double x, double y, double length, const QString& title)
{
    constexpr double ShortestArm = 4.0;
    const Lettering small { .stroke = 1.0, .tracking = 3.0, .paint = QColor(160, 164, 166) };
    const QSizeF size = sizeOnPixels(canvas, title, small);
    const double arm = (length - size.width() - 14.0) / 2.0;
    if (arm >= ShortestArm) {
        engraveHorizontal(canvas, x, y, arm);
        engraveHorizontal(canvas, x + length - arm, y, arm);
    }
    engraveOnPixels(canvas, title, QPointF(x + length / 2.0, y - size.height() / 2.0), small);
}

// Engraves the label of a key. One that is wider than its column goes on below after its slash.
void engraveLabel(Canvas& canvas, double middle, const QString& label)
{
    constexpr double Column = 88.0;
    const QSizeF size = sizeOnPixels(canvas, label);
    const qsizetype slash = label.indexOf(QLatin1Char('/'));
    if (size.width() <= Column || slash < 0) {
        engraveOnPixels(canvas, label, QPointF(middle, LabelTop));
        return;
    }
    const double line = size.height() + 3.0 / canvas.scale();
    engraveOnPixels(canvas, label.first(slash + 1), QPointF(middle, LabelTop));
    engraveOnPixels(canvas, label.sliced(slash + 1), QPointF(middle, LabelTop + line));
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
        engraveLabel(canvas, middle, QStringLiteral("SELECT %1").arg(i + 1));
    }
}

void drawSideKey(Canvas& canvas, double left, const QString& label)
{
    drawKeyWell(canvas, left);
    engraveLabel(canvas, left + HalfFrame, label);
}

// The maker's name on the left and the product's emblem on the right stand on the same lines, each
// above a rule and a word. The emblem's body is as high as the letters; its wings rise above them.
constexpr double NameTop = 34;
constexpr double NameHeight = 32;
constexpr double NameRule = 86;
constexpr double NameWords = 97;
constexpr double NameTracking = 4.0;

// The wordmark fills the width of the rules below it, so that all of the left third has one
// measure.
void drawNamePlate(Canvas& canvas)
{
    const QTransform& toPixels = canvas.painter().transform();
    const QRectF place = canvas.onPixels(QRectF(LeftRule, NameTop, RuleLength, NameHeight));
    engraveShape(canvas, toPixels.inverted().map(zentaWordmark(toPixels.mapRect(place))),
        EngravedGrey, wholeDepth(canvas));
    engraveHorizontal(canvas, LeftRule, NameRule, RuleLength);
    engraveOnPixels(canvas, QStringLiteral("PLUG-IN PANEL"), QPointF(LeftRule + 1, NameWords),
        { .tracking = NameTracking, .anchor = Lettering::Anchor::Left });
}

void drawRightColumn(Canvas& canvas)
{
    constexpr double Middle = RightRule + RightRuleLength / 2.0;
    constexpr double Span = NameHeight / (KestrelTail - KestrelCrown);
    constexpr QPointF Centre(Middle, NameTop - KestrelCrown * Span);
    engraveShape(canvas, featheredKestrelMark(Centre, Span, Span * canvas.scale()), EngravedGrey,
        wholeDepth(canvas));
    engraveHorizontal(canvas, RightRule, NameRule, RightRuleLength);
    engraveOnPixels(canvas, QStringLiteral("KESTREL"), QPointF(Middle, NameWords),
        { .tracking = NameTracking });
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
    drawTitledRule(canvas, RightRule, 138, RightRuleLength, QStringLiteral("VIEW"));
    for (const QPointF at :
        { QPointF(11, 11), QPointF(771, 11), QPointF(11, 209), QPointF(771, 209) })
        driveScrew(canvas, at, 3.6, at.x() * 0.7 + at.y());
    return canvas.takeToPaint();
}

} // namespace kestrel::artwork
