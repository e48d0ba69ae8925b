#pragma once

#include "artwork/DotMatrixFont.h"

#include <QRectF>
#include <QSize>

#include <array>

namespace kestrel::artwork {

// The places of the dots of a character in a cell of any number of pixels. All dots of a display
// are equally large squares that begin at whole pixels, so that all strokes are equally wide and
// bright. Where there is room for a gap, the dots of a character are equally many pixels apart, and
// what remains of the cell lies around them; only the two rows for tails may be closer. The last
// column of pixels stays dark, so that neighbouring characters do not touch.
class DotGrid {
public:
    // A cell of the display is 8 × 13 units. Its dots are 1.5 units apart where pixels allow it.
    static constexpr int CellWidth = 8;
    static constexpr int CellHeight = 13;

    explicit DotGrid(QSize cellPixels);

    // In pixels of the cell.
    [[nodiscard]] QRectF dot(int row, int column) const;
    [[nodiscard]] double side() const { return m_side; } // of a dot, in pixels
    // True if there is a gap between all dots but those for tails.
    [[nodiscard]] bool isParted() const { return m_pitch >= SmallestParted; }
    // Pixels from dot to dot, if they are parted.
    [[nodiscard]] int pitch() const { return m_pitch; }
    // Pixels of the cell to a unit, in the direction with fewer of them.
    [[nodiscard]] double scale() const { return m_scale; }

private:
    static constexpr int SmallestParted = 2;

    void placeParted(QSize cellPixels);
    void placeJoined(QSize cellPixels);

    double m_scale;
    int m_pitch;
    double m_side = 1;
    std::array<int, DotColumns> m_lefts {};
    std::array<int, DotRows> m_tops {};
};

} // namespace kestrel::artwork
