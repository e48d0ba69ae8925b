#pragma once

#include "artwork/DotMatrixFont.h"

#include <QSize>

namespace kestrel::artwork {

// The characters for cells in which not every dot of a character and a gap beside it has a pixel.
// They are drawn by hand, pixel by pixel, three or four columns wide. A dim pixel rounds a corner
// or hints at a diagonal.
class SmallFace {
public:
    enum class Light { Dark, Dim, Full };

    static constexpr int Rows = 7;

    // True if a cell has too few pixels for one pixel a dot.
    [[nodiscard]] static bool isFor(QSize cellPixels)
    {
        return cellPixels.width() <= DotColumns || cellPixels.height() < DotRows;
    }

    // The last column of pixels of a cell stays dark if it has at least four.
    explicit SmallFace(QSize cellPixels)
        : m_columns(cellPixels.width() < DotColumns ? FewestColumns : FewestColumns + 1)
    {
    }

    [[nodiscard]] int columns() const { return m_columns; }
    // Row 0 is the top row.
    [[nodiscard]] Light light(int code, int row, int column) const;

private:
    static constexpr int FewestColumns = 3;

    int m_columns;
};

} // namespace kestrel::artwork
