#pragma once

#include "artwork/NearestPixel.h"

#include <QSize>

namespace kestrel::test {

// The cell of a character on a panel that is so many device pixels wide.
[[nodiscard]] inline QSize cellAt(int width)
{
    return { artwork::nearestPixel(8 * width / 782.0), artwork::nearestPixel(13 * width / 782.0) };
}

} // namespace kestrel::test
