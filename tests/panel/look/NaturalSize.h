#pragma once

#include <QSize>

namespace kestrel::test {

// The size of a panel of this width, in units, in the proportion of 782 × 220.
[[nodiscard]] inline QSize naturalSize(int width)
{
    return { width, qRound(width * 220 / 782.0) };
}

} // namespace kestrel::test
