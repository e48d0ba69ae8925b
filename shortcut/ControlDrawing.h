#pragma once

#include <QFont>
#include <QPointF>
#include <QRectF>

class QPainter;

// The drawing functions that the controls of the setup window share.
namespace kestrel {

class InterfaceImage;

// The most UTF-16 units of one text, which may come from a file, that are shown. A control holds
// far fewer. Measuring more would cost time for nothing.
inline constexpr qsizetype MostShownUnits = 256;

// Draws the picture at its own size, in the pixel density of the device.
void drawImage(QPainter& painter, const InterfaceImage& image, QPointF origin, double opacity = 1);

// Draws the ring that marks the control with the keyboard focus. `outline` is that of the control.
void drawFocusRing(QPainter& painter, const QRectF& outline, double radius);

// Returns the font with less space between its letters if the text is too wide, down to the limit
// of what is legible.
[[nodiscard]] QFont tightened(const QFont& font, const QString& text, double width);

} // namespace kestrel
