#include "tools/artwork/ApplicationIcons.h"

#include "artwork/Canvas.h"
#include "artwork/Emblem.h"
#include "artwork/Light.h"
#include "artwork/StrokeFont.h"

#include <algorithm>

namespace kestrel::artwork {

namespace {

// Icons of at least this edge, in pixels, have room for shadows, lamps and letters.
constexpr int DetailedFrom = 48;

constexpr QColor Bird(126, 232, 214);
constexpr QColor LampCore(255, 232, 184);
constexpr QColor LampEdge(255, 160, 52);

// Draws a console key with the bird in it.
void drawConsoleKey(Canvas& canvas, const QRectF& square, bool detailed)
{
    QPainter& painter = canvas.painter();
    const double e = square.width();
    const QPainterPath body = roundedRect(square, e * 0.2);
    QLinearGradient shell(square.topLeft(), square.bottomLeft());
    shell.setColorAt(0.0, QColor(104, 109, 114));
    shell.setColorAt(0.6, QColor(52, 55, 58));
    shell.setColorAt(1.0, QColor(38, 40, 43));
    painter.fillPath(body, shell);

    const double rim = std::max(1.0, e * 0.035);
    const QRectF face = square.adjusted(rim, rim, -rim, -rim);
    const QPainterPath inside = roundedRect(face, e * 0.2 - rim * 0.8);
    QLinearGradient sheet(face.topLeft(), face.bottomLeft());
    sheet.setColorAt(0.0, QColor(50, 53, 56));
    sheet.setColorAt(0.5, QColor(34, 36, 39));
    sheet.setColorAt(1.0, QColor(22, 23, 25));
    painter.fillPath(inside, sheet);
    if (detailed)
        painter.fillPath(
            inside.subtracted(inside.translated(0, e * 0.012)), QColor(255, 255, 255, 50));
}

void drawBird(Canvas& canvas, QPointF centre, double span, bool detailed)
{
    const QPainterPath mark = kestrelMark(centre, span);
    if (detailed) {
        QColor halo = Bird;
        halo.setAlpha(110);
        castSoft(canvas, mark, QPointF(0, 0), span * 0.07, halo);
    }
    QLinearGradient light(0, centre.y() - span * 0.4, 0, centre.y() + span * 0.45);
    light.setColorAt(0.0, QColor(206, 255, 244));
    light.setColorAt(1.0, QColor(64, 190, 178));
    canvas.painter().fillPath(mark, detailed ? QBrush(light) : QBrush(Bird));
}

void drawLampBar(Canvas& canvas, const QRectF& bar)
{
    const QPainterPath shape = roundedRect(bar, bar.height() / 2.0);
    QColor halo = LampEdge;
    halo.setAlpha(200);
    castSoft(canvas, shape, QPointF(0, 0), bar.height() * 0.9, halo);
    QLinearGradient glow(bar.topLeft(), bar.topRight());
    glow.setColorAt(0.0, LampEdge);
    glow.setColorAt(0.5, LampCore);
    glow.setColorAt(1.0, LampEdge);
    canvas.painter().fillPath(shape, glow);
}

QPainterPath pageOutline(const QRectF& page, double fold)
{
    const double corner = page.width() * 0.06;
    QPainterPath path;
    path.moveTo(page.left() + corner, page.top());
    path.lineTo(page.right() - fold, page.top());
    path.lineTo(page.right(), page.top() + fold);
    path.lineTo(page.right(), page.bottom() - corner);
    path.quadTo(page.bottomRight(), page.bottomRight() - QPointF(corner, 0));
    path.lineTo(page.left() + corner, page.bottom());
    path.quadTo(page.bottomLeft(), page.bottomLeft() - QPointF(0, corner));
    path.lineTo(page.left(), page.top() + corner);
    path.quadTo(page.topLeft(), page.topLeft() + QPointF(corner, 0));
    return path;
}

void drawPage(Canvas& canvas, const QRectF& page, bool detailed)
{
    QPainter& painter = canvas.painter();
    const double fold = page.width() * 0.26;
    const QPainterPath sheet = pageOutline(page, fold);
    if (detailed)
        castSoft(canvas, sheet, QPointF(0, page.width() * 0.02), page.width() * 0.04,
            QColor(0, 0, 0, 130));
    QLinearGradient paper(page.topLeft(), page.bottomLeft());
    paper.setColorAt(0.0, QColor(246, 244, 238));
    paper.setColorAt(1.0, QColor(218, 215, 206));
    painter.fillPath(sheet, paper);
    const double line = std::max(0.8, page.width() * 0.012);
    painter.strokePath(
        sheet, QPen(QColor(92, 92, 90), line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));

    QPainterPath corner;
    corner.moveTo(page.right() - fold, page.top());
    corner.lineTo(page.right() - fold, page.top() + fold);
    corner.lineTo(page.right(), page.top() + fold);
    corner.closeSubpath();
    painter.fillPath(corner, QColor(178, 175, 166));
    painter.strokePath(
        corner, QPen(QColor(92, 92, 90), line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

void drawSuffix(Canvas& canvas, const QRectF& page)
{
    const double step = page.width() * 0.026;
    const QString suffix = QStringLiteral("ZKCF");
    QTransform place;
    place.translate(
        page.center().x() - widthOf(suffix, 2.6) * step / 2.0, page.bottom() - step * 9.2);
    place.scale(step, step);
    canvas.painter().strokePath(place.map(strokesOf(suffix, 2.6)),
        QPen(QColor(62, 64, 66), step * 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

} // namespace

QImage drawApplicationIcon(int size)
{
    Canvas canvas(QSize(size, size), 1, Canvas::Backing::Transparent);
    const bool detailed = size >= DetailedFrom;
    const double e = size;
    if (!detailed) {
        drawConsoleKey(canvas, QRectF(0, 0, e, e), false);
        drawBird(canvas, QPointF(e * 0.5, e * 0.5), e * 0.8, false);
        return canvas.take();
    }
    const QRectF square(e * 0.07, e * 0.06, e * 0.86, e * 0.86);
    castSoft(canvas, roundedRect(square, e * 0.17), QPointF(0, e * 0.018), e * 0.025,
        QColor(0, 0, 0, 160));
    drawConsoleKey(canvas, square, true);
    drawBird(canvas, QPointF(e * 0.5, e * 0.45), e * 0.62, true);
    drawLampBar(canvas, QRectF(e * 0.36, e * 0.79, e * 0.28, e * 0.035));
    return canvas.take();
}

QImage drawDocumentIcon(int size)
{
    Canvas canvas(QSize(size, size), 1, Canvas::Backing::Transparent);
    const bool detailed = size >= DetailedFrom;
    const double e = size;
    const QRectF page = detailed ? QRectF(e * 0.15, e * 0.05, e * 0.7, e * 0.88)
                                 : QRectF(e * 0.125 + 0.5, 0.5, e * 0.75 - 1.0, e - 1.0);
    drawPage(canvas, page, detailed);
    const double key = page.width() * (detailed ? 0.6 : 0.82);
    const double middle = page.top() + page.height() * (detailed ? 0.5 : 0.58);
    const QRectF square(page.center().x() - key / 2.0, middle - key / 2.0, key, key);
    drawConsoleKey(canvas, square, detailed);
    drawBird(canvas, square.center(), key * 0.78, detailed);
    if (detailed)
        drawSuffix(canvas, page);
    return canvas.take();
}

} // namespace kestrel::artwork
