#pragma once

#include "sets/sheet/KeySheet.h"

#include <QByteArray>

#include <optional>

// Key sheets as files.
namespace kestrel::KeySheetFile {

enum class Format { Pdf, Svg, Png };

// By the extension. No value for another one.
[[nodiscard]] std::optional<Format> formatOf(const QString& path);

// PDF with texts that can be searched, SVG with outlines, PNG of 200 pixels an inch.
[[nodiscard]] QByteArray content(const KeySheet& sheet, Format format);

} // namespace kestrel::KeySheetFile
