#include "artwork/StrokeFont.h"

#include <QByteArrayView>

#include <algorithm>
#include <array>
#include <cmath>

namespace kestrel::artwork {

namespace {

struct Glyph {
    char16_t letter;
    double width;
    const char* strokes; // M = move, L = line, Q = quadratic curve, Z = close
    const char* plainStrokes = nullptr; // on few pixels, where the ends of curves would blur
};

constexpr auto Glyphs = std::to_array<Glyph>({
    { u' ', 1.5, "" },
    { u'A', 4, "M0 6 L2 0 L4 6 M0.7 4 L3.3 4" },
    { u'B', 4, "M0 3 L2.4 3 Q4 3 4 4.5 Q4 6 2.4 6 L0 6 L0 0 L2.2 0 Q3.7 0 3.7 1.5 Q3.7 3 2.2 3" },
    { u'C', 4, "M4 1.5 Q3.6 0 2 0 Q0 0 0 2 L0 4 Q0 6 2 6 Q3.6 6 4 4.5",
        "M4 0 L1.7 0 Q0 0 0 2 L0 4 Q0 6 1.7 6 L4 6" },
    { u'D', 4, "M0 0 L2 0 Q4 0 4 2 L4 4 Q4 6 2 6 L0 6 Z" },
    { u'E', 3.5, "M3.5 0 L0 0 L0 6 L3.5 6 M0 3 L2.8 3" },
    { u'F', 3.5, "M3.5 0 L0 0 L0 6 M0 3 L2.8 3" },
    { u'G', 4, "M4 1.5 Q3.6 0 2 0 Q0 0 0 2 L0 4 Q0 6 2 6 Q4 6 4 4 L4 3 L2.3 3",
        "M4 0 L1.7 0 Q0 0 0 2 L0 4 Q0 6 1.7 6 L4 6 L4 3 L2.5 3" },
    { u'H', 4, "M0 0 L0 6 M4 0 L4 6 M0 3 L4 3" },
    { u'I', 0, "M0 0 L0 6" },
    { u'J', 3, "M3 0 L3 4.2 Q3 6 1.5 6 Q0 6 0 4.5" },
    { u'K', 4, "M0 0 L0 6 M4 0 L0 3.8 M1.4 2.5 L4 6" },
    { u'L', 3.4, "M0 0 L0 6 L3.4 6" },
    { u'M', 4, "M0 6 L0 0 L2 3.6 L4 0 L4 6" },
    { u'N', 4, "M0 6 L0 0 L4 6 L4 0" },
    { u'O', 4, "M2 0 Q4 0 4 2 L4 4 Q4 6 2 6 Q0 6 0 4 L0 2 Q0 0 2 0 Z" },
    { u'P', 4, "M0 6 L0 0 L2.4 0 Q4 0 4 1.5 Q4 3 2.4 3 L0 3" },
    { u'Q', 4, "M2 0 Q4 0 4 2 L4 4 Q4 6 2 6 Q0 6 0 4 L0 2 Q0 0 2 0 Z M2.5 4.4 L4.2 6.4" },
    { u'R', 4, "M0 6 L0 0 L2.4 0 Q4 0 4 1.5 Q4 3 2.4 3 L0 3 M2.1 3 L4 6" },
    { u'S', 4, "M4 1.3 Q3.6 0 2 0 Q0 0 0 1.5 Q0 2.8 2 3 Q4 3.2 4 4.5 Q4 6 2 6 Q0.4 6 0 4.7",
        "M4 0 L1.5 0 Q0 0 0 1.5 Q0 3 1.5 3 L2.5 3 Q4 3 4 4.5 Q4 6 2.5 6 L0 6" },
    { u'T', 4, "M0 0 L4 0 M2 0 L2 6" },
    { u'U', 4, "M0 0 L0 4 Q0 6 2 6 Q4 6 4 4 L4 0" },
    { u'V', 4, "M0 0 L2 6 L4 0" },
    { u'W', 5, "M0 0 L1.2 6 L2.5 1.6 L3.8 6 L5 0" },
    { u'X', 4, "M0 0 L4 6 M4 0 L0 6" },
    { u'Y', 4, "M0 0 L2 3.2 L4 0 M2 3.2 L2 6" },
    { u'Z', 4, "M0 0 L4 0 L0 6 L4 6" },
    { u'0', 4, "M2 0 Q4 0 4 2 L4 4 Q4 6 2 6 Q0 6 0 4 L0 2 Q0 0 2 0 Z" },
    { u'1', 2, "M1 1 L2 0 L2 6" },
    { u'2', 4, "M0 1.6 Q0 0 2 0 Q4 0 4 1.7 Q4 2.8 2.8 3.7 L0 6 L4 6" },
    { u'3', 4, "M0 0 L4 0 L1.9 2.4 Q4 2.4 4 4.2 Q4 6 2 6 Q0.4 6 0 4.8",
        "M0 0 L2.5 0 Q4 0 4 1.5 Q4 3 2.5 3 L1.2 3 M2.5 3 Q4 3 4 4.5 Q4 6 2.5 6 L0 6" },
    { u'4', 4, "M3 6 L3 0 L0 4 L4 4" },
    { u'5', 4, "M3.7 0 L0.4 0 L0.2 2.6 Q1 2.2 2 2.2 Q4 2.2 4 4.1 Q4 6 2 6 Q0.4 6 0 4.8" },
    { u'6', 4, "M3.6 0.3 Q0 0.6 0 4 Q0 6 2 6 Q4 6 4 4.2 Q4 2.6 2 2.6 Q0.3 2.6 0 4" },
    { u'7', 4, "M0 0 L4 0 L1.5 6" },
    { u'8', 4,
        "M2 2.8 Q0.3 2.8 0.3 1.4 Q0.3 0 2 0 Q3.7 0 3.7 1.4 Q3.7 2.8 2 2.8 Q0 2.8 0 4.4 "
        "Q0 6 2 6 Q4 6 4 4.4 Q4 2.8 2 2.8 Z" },
    { u'9', 4, "M4 2 Q3.7 3.4 2 3.4 Q0 3.4 0 1.8 Q0 0 2 0 Q4 0 4 2 Q4 5.4 0.4 5.7" },
    { u'/', 2.2, "M0 6.6 L2.2 -0.6" },
    { u'-', 2.4, "M0 3 L2.4 3" },
    { u'.', 0, "M0 6 L0.01 6" },
    { u'\u00B7', 0, "M0 3 L0.01 3" },
    { u'\u21EA', 4, "M2 0 L4 2.4 L3 2.4 L3 4 L1 4 L1 2.4 L0 2.4 Z M1 6 L3 6" },
    { u'^', 4, "M0 3 L2 0.6 L4 3" },
    { u'\u2325', 6, "M0 1 L1.8 1 L4 5 L6 5 M3.8 1 L6 1" },
    { u'\u2318', 6,
        "M2 1 Q2 0 1 0 Q0 0 0 1 Q0 2 1 2 L5 2 Q6 2 6 1 Q6 0 5 0 Q4 0 4 1 L4 5 Q4 6 5 6 "
        "Q6 6 6 5 Q6 4 5 4 L1 4 Q0 4 0 5 Q0 6 1 6 Q2 6 2 5 Z" },
});

// Letters with a stroke or a peak in their middle have it on a pixel, so they are an even number of
// pixels wide, and at least this many.
struct Middle {
    char16_t letter;
    int narrowest;
};
constexpr auto Middles = std::to_array<Middle>(
    { { u'A', 4 }, { u'M', 4 }, { u'T', 2 }, { u'V', 4 }, { u'W', 6 }, { u'X', 4 }, { u'Y', 4 } });

const Glyph* find(QChar letter)
{
    const auto* found = std::find_if(Glyphs.begin(), Glyphs.end(),
        [letter](const Glyph& glyph) { return letter == glyph.letter; });
    return found == Glyphs.end() ? nullptr : found;
}

double readNumber(const char*& at)
{
    while (*at == ' ')
        ++at;
    const char* first = at;
    while (*at == '-' || *at == '.' || (*at >= '0' && *at <= '9'))
        ++at;
    return QByteArrayView(first, at).toDouble();
}

QPointF readPoint(const char*& at)
{
    const double x = readNumber(at);
    return { x, readNumber(at) };
}

QPainterPath parse(const char* strokes)
{
    QPainterPath path;
    for (const char* at = strokes; *at != '\0';) {
        const char command = *at++;
        if (command == 'M')
            path.moveTo(readPoint(at));
        else if (command == 'L')
            path.lineTo(readPoint(at));
        else if (command == 'Z')
            path.closeSubpath();
        else if (command == 'Q') {
            const QPointF control = readPoint(at);
            path.quadTo(control, readPoint(at));
        }
    }
    return path;
}

// A half goes down: the upper half of a letter is the smaller one.
int toPixel(double value)
{
    return static_cast<int>(std::ceil(value - 0.5));
}

int pixelsOf(const Glyph& glyph, PixelGrid grid)
{
    const double pixels = glyph.width * grid.capital / CapitalHeight;
    const auto* middle = std::find_if(Middles.begin(), Middles.end(),
        [&](const Middle& one) { return one.letter == glyph.letter; });
    if (middle != Middles.end())
        return std::max(middle->narrowest, 2 * toPixel(pixels / 2.0));
    return toPixel(pixels);
}

// Moves upright and level strokes to whole pixels, wherever they are within a letter.
void straighten(QPainterPath& path)
{
    const auto together = [](double one, double other) { return std::abs(one - other) < 1e-6; };
    for (int i = 1; i < path.elementCount(); ++i) {
        if (!path.elementAt(i).isLineTo())
            continue;
        QPointF from = path.elementAt(i - 1);
        QPointF to = path.elementAt(i);
        if (together(from.x(), to.x())) {
            from.setX(toPixel(from.x()));
            to.setX(from.x());
        }
        if (together(from.y(), to.y())) {
            from.setY(toPixel(from.y()));
            to.setY(from.y());
        }
        path.setElementPositionAt(i - 1, from.x(), from.y());
        path.setElementPositionAt(i, to.x(), to.y());
    }
}

QPainterPath onGrid(const Glyph& glyph, PixelGrid grid)
{
    const bool isPlain = grid.capital < CapitalHeight && glyph.plainStrokes != nullptr;
    QPainterPath path = parse(isPlain ? glyph.plainStrokes : glyph.strokes);
    const double across
        = glyph.width > 0.0 ? pixelsOf(glyph, grid) / glyph.width : grid.capital / CapitalHeight;
    // The middle of a capital has a stroke in many letters.
    constexpr double Half = CapitalHeight / 2.0;
    const int middle = toPixel(grid.capital / 2.0);
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPointF at = path.elementAt(i);
        const double y = at.y() < Half ? at.y() * middle / Half
                                       : middle + (at.y() - Half) * (grid.capital - middle) / Half;
        path.setElementPositionAt(i, at.x() * across, y);
    }
    straighten(path);
    return path;
}

template <typename Do> void forEachGlyph(const QString& text, const Do& action)
{
    for (const QChar letter : text) {
        if (const Glyph* glyph = find(letter))
            action(*glyph);
    }
}

} // namespace

QPainterPath strokesOf(const QString& text, double tracking)
{
    QPainterPath path;
    double x = 0.0;
    forEachGlyph(text, [&](const Glyph& glyph) {
        path.addPath(parse(glyph.strokes).translated(x, 0.0));
        x += glyph.width + tracking;
    });
    return path;
}

double widthOf(const QString& text, double tracking)
{
    double x = 0.0;
    forEachGlyph(text, [&](const Glyph& glyph) { x += glyph.width + tracking; });
    return std::max(0.0, x - tracking);
}

QPainterPath strokesOf(const QString& text, PixelGrid grid)
{
    QPainterPath path;
    int x = 0;
    forEachGlyph(text, [&](const Glyph& glyph) {
        path.addPath(onGrid(glyph, grid).translated(x, 0.0));
        x += pixelsOf(glyph, grid) + grid.gap;
    });
    return path;
}

int widthOf(const QString& text, PixelGrid grid)
{
    int x = 0;
    forEachGlyph(text, [&](const Glyph& glyph) { x += pixelsOf(glyph, grid) + grid.gap; });
    return std::max(0, x - grid.gap);
}

} // namespace kestrel::artwork
