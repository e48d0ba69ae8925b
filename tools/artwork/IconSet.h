#pragma once

#include <QByteArray>

#include <functional>
#include <optional>

namespace kestrel::artwork {

// Makes a set of icons in the container format of macOS (.icns): 16, 32, 128, 256 and 512 points,
// each for plain and for high-resolution screens. `png` returns the PNG file of a picture with the
// given edge in pixels. No value when a file is no picture of that size.
[[nodiscard]] std::optional<QByteArray> iconSet(const std::function<QByteArray(int edge)>& png);

} // namespace kestrel::artwork
