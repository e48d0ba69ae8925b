#pragma once

#include "pictures/InterfaceImage.h"

#include <QColor>
#include <QString>

// Pictures in which every cell, frame and lamp has its own colour. Tests see from the colours which
// part of which picture is painted where. The blue differs in the double-density pictures.
namespace kestrel::test::GeometryPictures {

inline constexpr int Single = 0;
inline constexpr int Doubled = 1;

[[nodiscard]] QRgb background(int x, int y, int density = Single); // pixels from the top left
[[nodiscard]] QRgb cell(int code, int density = Single);
[[nodiscard]] QRgb frame(int value, int density = Single);
[[nodiscard]] QRgb lamp(const QString& image, bool lit, int density = Single);

// Replaces InterfaceImage::named().
[[nodiscard]] InterfaceImage named(const QString& name);

} // namespace kestrel::test::GeometryPictures
