#include "artwork/KeyCap.h"

#include "artwork/Canvas.h"
#include "artwork/Light.h"

namespace kestrel::artwork {

void drawKeyCap(Canvas& canvas, const KeyCap& key)
{
    QPainter& painter = canvas.painter();
    painter.fillPath(roundedRect(key.rect, key.radius), key.bezel);

    const QRectF face = key.rect.adjusted(key.rim, key.rim, -key.rim, -key.rim);
    const double inner = key.radius - key.rim * 0.6;
    const QPainterPath cap = roundedRect(face, inner);
    QLinearGradient body(face.topLeft(), face.bottomLeft());
    body.setColorAt(0.0, key.top);
    body.setColorAt(1.0, key.bottom);
    painter.fillPath(cap, body);

    if (key.pressed) {
        shadeInside(canvas, cap, QPointF(0, 2), 3.0, QColor(0, 0, 0, 170));
        return;
    }
    // A light upper edge and a dark lower one, both clipped to the outline of the cap.
    painter.fillPath(cap.subtracted(cap.translated(0, 1.0)), key.shine);
    painter.fillPath(cap.subtracted(cap.translated(0, -1.2)), QColor(0, 0, 0, 70));
}

} // namespace kestrel::artwork
