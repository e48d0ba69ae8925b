#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace kestrel::test {

// The light that a channel of 0 to 255 stands for, 0 to 1.
[[nodiscard]] inline double linear(int channel)
{
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

// The relative luminance of the Web Content Accessibility Guidelines, 0 to 1.
[[nodiscard]] inline double luminance(QRgb pixel)
{
    return 0.2126 * linear(qRed(pixel)) + 0.7152 * linear(qGreen(pixel))
        + 0.0722 * linear(qBlue(pixel));
}

[[nodiscard]] inline double contrastOf(double luminance, double other)
{
    return (std::max(luminance, other) + 0.05) / (std::min(luminance, other) + 0.05);
}

} // namespace kestrel::test
