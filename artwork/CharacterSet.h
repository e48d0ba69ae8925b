#pragma once

#include "pictures/DrawnPicture.h"

namespace kestrel::artwork {

// The 128 characters of the display, one below the other, code 0 at the top, 8 × 13 units each. A
// part of it is always one whole cell. The unlit dots belong to the display's glass.
class CharacterSet : public DrawnPicture {
public:
    [[nodiscard]] QSize size() const override;
    [[nodiscard]] QImage draw(const QRect& source, QSize pixels) const override;
    [[nodiscard]] QRect lightArea(const QRect& source) const override;
    [[nodiscard]] QImage drawLight(const QRect& source, QSize pixels) const override;
};

} // namespace kestrel::artwork
