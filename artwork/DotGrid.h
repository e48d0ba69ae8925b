#pragma once

#include <QRect>
#include <QSize>

namespace kestrel::artwork {

// The places of the dots of a character in a cell of any number of pixels. All dots of a display
// are squares of the same number of whole pixels, so that all strokes are equally wide and bright.
// What remains of the pitch becomes gaps of nearly equal width.
class DotGrid {
public:
    // A cell of the display is 8 × 13 units. Its dots are 1.5 units apart, also from one character
    // to the next.
    static constexpr int CellWidth = 8;
    static constexpr int CellHeight = 13;
    static constexpr double Pitch = 1.5;

    // From this pitch on, in pixels, there is a gap between all dots.
    static constexpr double PartedPitch = 2.95;

    explicit DotGrid(QSize cellPixels);

    // The pixels of a dot. Column 5 lies between this character and the next one.
    [[nodiscard]] QRect dot(int row, int column) const;
    [[nodiscard]] int side() const { return m_side; } // of a dot, in pixels
    // Pixels from dot to dot.
    [[nodiscard]] double horizontalPitch() const { return m_horizontal; }
    [[nodiscard]] double verticalPitch() const { return m_vertical; }
    [[nodiscard]] double pitch() const; // the smaller one of both

private:
    double m_horizontal;
    double m_vertical;
    int m_side;
};

} // namespace kestrel::artwork
