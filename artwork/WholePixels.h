#pragma once

#include <algorithm>
#include <cmath>

namespace kestrel::artwork {

// The nearest number of pixels, at least one, so that what has this width is seen.
[[nodiscard]] inline int wholePixels(double value)
{
    return std::max(1, static_cast<int>(std::lround(value)));
}

} // namespace kestrel::artwork
