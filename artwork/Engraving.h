#pragma once

#include <QColor>
#include <QPointF>
#include <QString>

class QPainterPath;

namespace kestrel::artwork {

class Canvas;

inline constexpr QColor EngravedGrey(188, 192, 194);

// Letters and lines that are cut into the sheet and filled with paint.
struct Lettering {
    enum class Anchor { Left, Centre };

    double size = 1.0; // units to one grid step; capitals are 6 steps high
    double stroke = 1.15; // units
    double tracking = 2.0; // grid steps between letters
    QColor paint = EngravedGrey;
    Anchor anchor = Anchor::Centre;
};

// `top` is the middle (or left end) of the upper edge of the capitals' centre lines. The function
// moves it to the middle of a pixel, so that small letters stay crisp.
void engrave(Canvas& canvas, const QString& text, QPointF top, const Lettering& lettering = {});

// Width of the text as engraved, in units.
[[nodiscard]] double engravedWidth(const QString& text, const Lettering& lettering);

// Draw hairlines, one unit wide, with a lit lower edge.
void engraveHorizontal(Canvas& canvas, double x, double y, double width);
void engraveVertical(Canvas& canvas, double x, double y, double height);

// Draws a filled shape that is cut into the sheet.
void engraveShape(Canvas& canvas, const QPainterPath& shape, const QColor& paint);

} // namespace kestrel::artwork
