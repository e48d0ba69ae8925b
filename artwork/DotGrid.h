#pragma once

#include "artwork/DotMatrixFont.h"

#include <QRectF>
#include <QSize>

#include <array>

namespace kestrel::artwork {

// The places of the dots of a character in a cell of any number of pixels. All dots of a display
// are equally large squares that begin at whole pixels, so that all strokes are equally wide and
// bright. What remains of the pitch becomes gaps of nearly equal width. The last column of pixels
// stays dark, so that neighbouring characters do not touch. Where one or two pixels are missing,
// the dots that matter least lie half on one pixel and half on the next; where more are, all dots
// share pixels.
class DotGrid {
public:
    // A cell of the display is 8 × 13 units. Its dots are 1.5 units apart, also from one character
    // to the next.
    static constexpr int CellWidth = 8;
    static constexpr int CellHeight = 13;
    static constexpr double Pitch = 1.5;

    explicit DotGrid(QSize cellPixels);

    // In pixels of the cell.
    [[nodiscard]] QRectF dot(int row, int column) const;
    [[nodiscard]] double side() const { return m_side; } // of a dot, in pixels
    // True if there is a gap between all dots.
    [[nodiscard]] bool isParted() const;
    // Pixels from dot to dot.
    [[nodiscard]] double horizontalPitch() const { return m_horizontal; }
    [[nodiscard]] double verticalPitch() const { return m_vertical; }
    [[nodiscard]] double pitch() const; // the smaller one of both

private:
    double m_horizontal;
    double m_vertical;
    double m_side;
    std::array<double, DotColumns> m_lefts;
    std::array<double, DotRows> m_tops;
};

} // namespace kestrel::artwork
