#include "artwork/Wordmark.h"

#include <QPolygonF>
#include <QTransform>

namespace kestrel::artwork {

namespace {
// Letters are 32 units high. Horizontal strokes are 4 units thick, upright ones 4.6, which looks
// the same.
constexpr double LetterHeight = 32;
constexpr double Spacing = 18.5;

// Each letter is one outline, so that no strokes overlap.
const QPolygonF& letterZ()
{
    static const QPolygonF outline { { { 0, 32 }, { 0, 28.6 }, { 26.6, 4 }, { 0.8, 4 }, { 0.8, 0 },
        { 33.6, 0 }, { 33.6, 3.4 }, { 7, 28 }, { 34, 28 }, { 34, 32 } } };
    return outline;
}

const QPolygonF& letterE()
{
    static const QPolygonF outline { { { 0, 0 }, { 31, 0 }, { 31, 4 }, { 4.6, 4 }, { 4.6, 13.8 },
        { 27, 13.8 }, { 27, 17.8 }, { 4.6, 17.8 }, { 4.6, 28 }, { 31, 28 }, { 31, 32 },
        { 0, 32 } } };
    return outline;
}

const QPolygonF& letterN()
{
    static const QPolygonF outline { { { 0, 32 }, { 0, 0 }, { 5.4, 0 }, { 29.4, 25.2 }, { 29.4, 0 },
        { 34, 0 }, { 34, 32 }, { 28.6, 32 }, { 4.6, 6.8 }, { 4.6, 32 } } };
    return outline;
}

const QPolygonF& letterT()
{
    static const QPolygonF outline { { { 0, 0 }, { 34, 0 }, { 34, 4 }, { 19.3, 4 }, { 19.3, 32 },
        { 14.7, 32 }, { 14.7, 4 }, { 0, 4 } } };
    return outline;
}

// Without a bar, as a peak.
const QPolygonF& letterA()
{
    static const QPolygonF outline { { { 0, 32 }, { 15.6, 0 }, { 20.4, 0 }, { 36, 32 },
        { 30.9, 32 }, { 18, 5.2 }, { 5.1, 32 } } };
    return outline;
}
} // namespace

QPainterPath zentaWordmark(const QRectF& place)
{
    QPainterPath word;
    double x = 0;
    for (const QPolygonF& letter : { letterZ(), letterE(), letterN(), letterT(), letterA() }) {
        word.addPolygon(letter.translated(x, 0));
        word.closeSubpath();
        x += letter.boundingRect().width() + Spacing;
    }
    const QRectF drawn = word.boundingRect();
    QTransform fit;
    fit.translate(place.left(), place.top());
    fit.scale(place.width() / drawn.width(), place.height() / LetterHeight);
    return fit.map(word.translated(-drawn.left(), 0));
}

} // namespace kestrel::artwork
