#pragma once

#include <QImage>

namespace kestrel::artwork {

// Draw the icon of the program and the icon of its documents. `size` is the edge in pixels.
[[nodiscard]] QImage drawApplicationIcon(int size);
[[nodiscard]] QImage drawDocumentIcon(int size);

} // namespace kestrel::artwork
