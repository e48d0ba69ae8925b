#include "tools/artwork/SetupBack.h"

#include "artwork/BrushedMetal.h"
#include "artwork/Canvas.h"
#include "artwork/Emblem.h"
#include "artwork/Engraving.h"
#include "artwork/Light.h"
#include "tools/artwork/SetupLettering.h"

namespace kestrel::artwork {

namespace {

constexpr int Width = 620;
constexpr int Height = 453;

// Converts a rectangle with the origin at the lower left, as in SetupTables, to the canvas.
QRectF placed(double x, double y, double w, double h)
{
    return { x, Height - y - h, w, h };
}

QRectF userKey(int index)
{
    const int column = index % 4;
    const int row = index / 4;
    return placed(36 + 98 * column, 272 - 98 * row, 78, 78);
}

QRectF field(int index)
{
    return placed(430, 315 - 49 * index, 171, 34);
}

void drawHeader(Canvas& canvas)
{
    engraveHorizontal(canvas, 0, 39, Width);
    engrave(canvas, QStringLiteral("ZENTA"), QPointF(500, 13),
        { .size = 2.0, .stroke = 1.8, .tracking = 3.0, .anchor = Lettering::Anchor::Left });
    engraveShape(canvas, kestrelMark(QPointF(590, 19), 24), EngravedGrey);
}

void drawKeyGrid(Canvas& canvas)
{
    const Lettering heading { .tracking = 3.0, .anchor = Lettering::Anchor::Left };
    engrave(canvas, QStringLiteral("USER ASSIGNABLE KEYS"), QPointF(36, 64), heading);

    const QRectF tray(22, 84, 400, 310);
    recess(canvas, roundedRect(tray, 8), QColor(20, 21, 22), 2.5);
    for (int i = 0; i < 12; ++i) {
        const QRectF key = userKey(i);
        recess(canvas, roundedRect(key.adjusted(-1.5, -1.5, 1.5, 1.5), 8), QColor(8, 8, 9), 1.2);
    }
}

void drawShortcutColumn(Canvas& canvas)
{
    const Lettering heading { .tracking = 3.0, .anchor = Lettering::Anchor::Left };
    engrave(canvas, QStringLiteral("SHORTCUTS"), QPointF(430, 64), heading);
    for (int i = 0; i < 4; ++i) {
        const QRectF slot = field(i).adjusted(-3, -3, 3, 3);
        recess(canvas, roundedRect(slot, 5), QColor(12, 12, 13), 1.8);
    }
}

// Draws the signs of the modifiers that have the same name on every keyboard.
void drawModifierLegend(Canvas& canvas)
{
    engraveHorizontal(canvas, 430, 349, 171);
    engraveModifier(canvas, { 430, 362 }, u"\u21EA", "SHIFT");
    engraveModifier(canvas, { 430, 381 }, u"^", "CONTROL");
}

void drawFooter(Canvas& canvas)
{
    engraveHorizontal(canvas, 0, 400, Width);
    engrave(canvas, QStringLiteral("KESTREL"), QPointF(36, 420),
        { .tracking = 4.0, .paint = QColor(140, 144, 146), .anchor = Lettering::Anchor::Left });
}

void drawButtonWell(Canvas& canvas, double x, double y)
{
    recess(canvas, roundedRect(placed(x, y, 56, 31).adjusted(-0.5, -0.5, 0.5, 0.5), 6),
        QColor(11, 11, 12), 1.0);
}

} // namespace

QImage drawSetupBack(int scale)
{
    Canvas canvas(QSize(Width, Height), scale, Canvas::Backing::Opaque);
    lay(canvas, { .top = QColor(40, 42, 45), .bottom = QColor(25, 26, 28), .seed = 29 });
    bevelEdge(canvas);
    drawHeader(canvas);
    drawKeyGrid(canvas);
    drawShortcutColumn(canvas);
    drawModifierLegend(canvas);
    drawFooter(canvas);
    for (const QPoint at :
        { QPoint(3, 419), QPoint(61, 419), QPoint(540, 119), QPoint(540, 15), QPoint(460, 15) })
        drawButtonWell(canvas, at.x(), at.y());
    return canvas.take();
}

} // namespace kestrel::artwork
