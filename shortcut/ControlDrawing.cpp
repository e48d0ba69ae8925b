#include "shortcut/ControlDrawing.h"

#include "pictures/InterfaceImage.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace kestrel {

namespace {
constexpr QColor FocusColor(94, 214, 206); // the colour of the console's display
constexpr double FocusWidth = 2;
constexpr double TightestSpacing = 85; // percent
} // namespace

void drawImage(QPainter& painter, const InterfaceImage& image, QPointF origin, double opacity)
{
    const bool isDense = painter.device()->devicePixelRatio() > 1 && !image.doubled().isNull();
    painter.save();
    painter.setOpacity(opacity);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(origin, image.size()), isDense ? image.doubled() : image.single());
    painter.restore();
}

void drawFocusRing(QPainter& painter, const QRectF& outline, double radius)
{
    constexpr double Inset = FocusWidth / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(FocusColor, FocusWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(outline.adjusted(Inset, Inset, -Inset, -Inset), radius, radius);
    painter.restore();
}

QFont tightened(const QFont& font, const QString& text, double width)
{
    const double needed = QFontMetricsF(font).horizontalAdvance(text);
    if (needed <= width)
        return font;
    QFont tight = font;
    tight.setLetterSpacing(
        QFont::PercentageSpacing, std::max(TightestSpacing, 100 * width / needed));
    return tight;
}

} // namespace kestrel
