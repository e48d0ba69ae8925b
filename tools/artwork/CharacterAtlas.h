#pragma once

#include <QImage>

namespace kestrel::artwork {

// The display's 128 characters, one below the other, code 0 on top: 8 × 13 units each.
[[nodiscard]] QImage drawCharacterAtlas(int scale);

} // namespace kestrel::artwork
