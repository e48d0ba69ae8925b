#include "tests/panel/GeometryPictures.h"
#include "tests/panel/MirroringPanel.h"
#include "tests/panel/Painted.h"
#include "tests/panel/look/NaturalSize.h"

#include <gtest/gtest.h>

#include <cmath>

namespace kestrel::test {

namespace {
constexpr QRgb Even = qRgb(255, 0, 0);
constexpr QRgb Odd = qRgb(0, 0, 255);

struct Scale {
    int width; // the width of the panel in units of the painter
    double density;

    friend void PrintTo(const Scale& scale, std::ostream* out)
    {
        *out << scale.width << " wide at density " << scale.density;
    }
};

// Neighbouring cells, knob frames and lamp frames differ as much as possible.
InterfaceImage striped(const QString& name)
{
    if (name == "back")
        return GeometryPictures::named(name);
    const bool isText = name == "text";
    const QSize piece = isText ? QSize(8, 13) : QSize(67, 67);
    const int pieces = name.startsWith("btn_") ? 2 : 128;
    QImage image(piece.width(), piece.height() * pieces, QImage::Format_RGB32);
    QPainter painter(&image);
    for (int i = 0; i < pieces; ++i)
        painter.fillRect(
            0, i * piece.height(), piece.width(), piece.height(), QColor(i % 2 == 0 ? Even : Odd));
    painter.end();
    return InterfaceImage(image);
}

// A panel at a scale that is not an integer.
class ScaledDrawing : public testing::TestWithParam<Scale>, protected MirroringPanel {
protected:
    ScaledDrawing()
        : MirroringPanel(Window::Hidden, &striped)
    {
        view.resize(naturalSize(GetParam().width));
    }

    [[nodiscard]] double horizontal() const { return view.width() / 782.0; }
    [[nodiscard]] double vertical() const { return view.height() / 220.0; }

    // Converts the place of a piece, in units from the bottom left, to the nearest device pixels.
    [[nodiscard]] QRect onDevice(double left, double bottom, double width, double height) const
    {
        const double top = view.height() - bottom * vertical() - height;
        const double across = wholePixels(view.width()) / view.width();
        const double down = wholePixels(view.height()) / view.height();
        return { static_cast<int>(std::lround(left * horizontal() * across)),
            static_cast<int>(std::lround(top * down)),
            static_cast<int>(std::lround(width * across)),
            static_cast<int>(std::lround(height * down)) };
    }
    // The panel covers whole pixels, and so does each piece of it.
    [[nodiscard]] static double wholePixels(int units)
    {
        return std::round(units * GetParam().density);
    }
    [[nodiscard]] QRect cell(double left, double bottom) const
    {
        return onDevice(left, bottom, 8 * horizontal(), 13 * vertical());
    }
    [[nodiscard]] QRect square(double left, double bottom) const
    {
        return onDevice(left, bottom, 67 * horizontal(), 67 * horizontal());
    }
    [[nodiscard]] QImage painting() { return painted(view, GetParam().density); }
};

bool showsOnly(const QImage& image, const QRect& area, QRgb colour)
{
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixel(x, y) != colour)
                return false;
        }
    }
    return true;
}

// Expects the piece to cover all pixels of the area and no pixel beyond the given sides.
void expectPiece(const QImage& image, const QRect& area, QRgb colour, Qt::Edges sides)
{
    EXPECT_TRUE(showsOnly(image, area, colour));
    const QPoint middle = area.center();
    const auto ends = [&](Qt::Edge edge, int x, int y) {
        if (sides.testFlag(edge)) {
            EXPECT_NE(image.pixel(x, y), colour) << "edge " << edge;
        }
    };
    ends(Qt::LeftEdge, area.left() - 1, middle.y());
    ends(Qt::RightEdge, area.right() + 1, middle.y());
    ends(Qt::TopEdge, middle.x(), area.top() - 1);
    ends(Qt::BottomEdge, middle.x(), area.bottom() + 1);
}

constexpr Qt::Edges AllEdges = Qt::LeftEdge | Qt::RightEdge | Qt::TopEdge | Qt::BottomEdge;
} // namespace

TEST_P(ScaledDrawing, cells_cover_the_nearest_pixels_and_nothing_of_their_neighbours)
{
    for (std::uint8_t zone = 0; zone < 8; ++zone)
        display(zone, "@\x41@\x41@\x41@\x41@\x41"); // codes 0x40 and 0x41 in turn
    const QImage image = painting();
    for (int zone = 0; zone < 8; ++zone) {
        for (int k = 0; k < 10; ++k) {
            SCOPED_TRACE(testing::Message() << "zone " << zone << " character " << k);
            const QRect place = cell(298 + 97 * (zone % 4) + 9 * k, zone < 4 ? 190 : 174);
            expectPiece(image, place, k % 2 == 0 ? Even : Odd, AllEdges);
        }
    }
}

TEST_P(ScaledDrawing, knobs_and_lamps_cover_the_nearest_pixels_and_nothing_of_their_neighbours)
{
    lamp(7, true);
    for (std::uint8_t i = 0; i < 4; ++i)
        knob(i, 0x10 + i);
    const QImage image = painting();
    for (int i = 0; i < 4; ++i) {
        SCOPED_TRACE(testing::Message() << "knob " << i);
        const QRgb colour = i % 2 == 0 ? Even : Odd;
        expectPiece(image, square(309 + 97 * i, 73), colour,
            Qt::LeftEdge | Qt::RightEdge | Qt::TopEdge); // a lamp is below it
    }
    expectPiece(image, square(18, 38), Even, AllEdges);
    expectPiece(image, square(115, 38), Odd, AllEdges);
    expectPiece(image, square(697, 38), Even, AllEdges);
}

INSTANTIATE_TEST_SUITE_P(, ScaledDrawing,
    testing::Values(Scale { 587, 1 }, Scale { 700, 1 }, Scale { 1001, 1 }, Scale { 1173, 1 },
        Scale { 782, 1.25 }, Scale { 782, 1.5 }, Scale { 587, 1.75 }));

} // namespace kestrel::test
