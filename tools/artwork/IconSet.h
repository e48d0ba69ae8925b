#pragma once

#include <QByteArray>

#include <functional>
#include <optional>

namespace kestrel::artwork {

// A set of icons in the container that macOS reads (.icns): 16, 32, 128, 256 and 512 points, each
// for plain and for high-resolution screens. `png` gives the PNG file with this edge in pixels.
// Missing when one is no picture of that size.
[[nodiscard]] std::optional<QByteArray> iconSet(const std::function<QByteArray(int edge)>& png);

} // namespace kestrel::artwork
