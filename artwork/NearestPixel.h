#pragma once

#include <algorithm>
#include <cmath>

namespace kestrel::artwork {

// Rounds a place on the panel to whole device pixels. Everything that must lie on the same pixels
// rounds with this: characters, and the unlit dots of the background below them.
[[nodiscard]] inline int nearestPixel(double value)
{
    constexpr double Inaccuracy = 1e-6;
    return static_cast<int>(std::floor(value + 0.5 + Inaccuracy));
}

// Rounds a width to whole device pixels, but to one at least, so that it is seen.
[[nodiscard]] inline int wholePixels(double value)
{
    return std::max(1, nearestPixel(value));
}

} // namespace kestrel::artwork
