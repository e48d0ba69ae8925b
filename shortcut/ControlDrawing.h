#pragma once

#include <QPointF>
#include <QRectF>

class QPainter;

// What the controls of the setup window draw alike.
namespace kestrel {

class InterfaceImage;

// At the picture's own size, in the density of the device.
void drawImage(QPainter& painter, const InterfaceImage& image, QPointF origin, double opacity = 1);

// Marks the control of that outline as the one with the keyboard focus.
void drawFocusRing(QPainter& painter, const QRectF& outline, double radius);

} // namespace kestrel
