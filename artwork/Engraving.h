#pragma once

#include <QColor>
#include <QPointF>
#include <QSizeF>
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

// How far the dark and the lit edge lie beside what is cut, in units.
inline constexpr double EngravedDepth = 0.8;
// This depth rounded to whole pixels, in units.
[[nodiscard]] double wholeDepth(const Canvas& canvas);

// `top` is the middle (or left end) of the upper edge of the capitals' centre lines. The function
// moves it to the middle of a pixel, so that small letters stay crisp at scale 1 and 2.
void engrave(Canvas& canvas, const QString& text, QPointF top, const Lettering& lettering = {});

// The same for pictures of any scale. All upright and level strokes lie on whole pixels. Capitals
// are at least 5 pixels high, because on fewer nobody can tell them apart.
void engraveOnPixels(
    Canvas& canvas, const QString& text, QPointF top, const Lettering& lettering = {});

// Width and height of such a text in units, without the thickness of its strokes.
[[nodiscard]] QSizeF sizeOnPixels(
    Canvas& canvas, const QString& text, const Lettering& lettering = {});

// Draw hairlines, one unit wide, with a lit lower edge.
void engraveHorizontal(Canvas& canvas, double x, double y, double width);
void engraveVertical(Canvas& canvas, double x, double y, double height);

// Draws a filled shape that is cut into the sheet.
void engraveShape(
    Canvas& canvas, const QPainterPath& shape, const QColor& paint, double depth = EngravedDepth);

} // namespace kestrel::artwork
