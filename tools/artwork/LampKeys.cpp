#include "tools/artwork/LampKeys.h"

#include "tools/artwork/Canvas.h"
#include "tools/artwork/KeyCap.h"
#include "tools/artwork/Light.h"

namespace kestrel::artwork {

namespace {

constexpr int FrameSize = 67;
constexpr QRectF KeyRect(8.5, 39.0, 50.0, 22.0);

struct LampPaint {
    QColor unlitTop;
    QColor unlitBottom;
    QColor litTop;
    QColor litBottom;
    QColor hot;
    QColor halo;
};

LampPaint paintOf(LampColour colour)
{
    switch (colour) {
    case LampColour::Green:
        return { QColor(44, 74, 50), QColor(25, 46, 30), QColor(126, 226, 128), QColor(58, 172, 84),
            QColor(228, 255, 216), QColor(90, 220, 110, 150) };
    case LampColour::Red:
        return { QColor(92, 36, 32), QColor(58, 20, 18), QColor(255, 112, 84), QColor(222, 48, 36),
            QColor(255, 216, 196), QColor(255, 80, 50, 160) };
    case LampColour::Orange:
        break;
    }
    return { QColor(98, 66, 28), QColor(62, 39, 15), QColor(255, 196, 92), QColor(244, 140, 26),
        QColor(255, 242, 206), QColor(255, 160, 50, 150) };
}

void drawUnlit(Canvas& canvas, const QRectF& rect, const LampPaint& paint)
{
    drawKeyCap(canvas,
        { .rect = rect,
            .top = paint.unlitTop,
            .bottom = paint.unlitBottom,
            .shine = QColor(255, 255, 255, 46) });
}

void drawLit(Canvas& canvas, const QRectF& rect, const LampPaint& paint)
{
    castSoft(canvas, roundedRect(rect, 5.0), QPointF(0, 0), 3.0, paint.halo);
    drawKeyCap(canvas,
        { .rect = rect,
            .top = paint.litTop,
            .bottom = paint.litBottom,
            .shine = QColor(255, 255, 255, 140),
            .bezel = paint.unlitBottom.darker(160) });
    const QRectF face = rect.adjusted(1.6, 1.6, -1.6, -1.6);
    QPainter& painter = canvas.painter();
    painter.save();
    painter.translate(face.center());
    painter.scale(face.width() / 2.0, face.height() / 2.0);
    QRadialGradient bulb(QPointF(0, 0), 1.0);
    QColor clear = paint.hot;
    clear.setAlpha(0);
    bulb.setColorAt(0.0, paint.hot);
    bulb.setColorAt(1.0, clear);
    painter.setBrush(bulb);
    painter.drawEllipse(QPointF(0, 0), 1.0, 1.0);
    painter.setBrush(Qt::NoBrush);
    painter.restore();
}

} // namespace

QImage drawLampKey(LampColour colour, int scale)
{
    Canvas canvas(QSize(FrameSize, 2 * FrameSize), scale, Canvas::Backing::Transparent);
    const LampPaint paint = paintOf(colour);
    drawUnlit(canvas, KeyRect, paint);
    drawLit(canvas, KeyRect.translated(0, FrameSize), paint);
    return canvas.take();
}

} // namespace kestrel::artwork
