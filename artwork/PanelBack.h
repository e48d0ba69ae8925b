#pragma once

#include "pictures/DrawnPicture.h"

namespace kestrel::artwork {

// The face of the plug-in panel, 782 × 220 units.
class PanelBack : public DrawnPicture {
public:
    [[nodiscard]] QSize size() const override;
    [[nodiscard]] bool isOpaque() const override { return true; }
    [[nodiscard]] QImage draw(const QRect& source, QSize pixels) const override;
};

} // namespace kestrel::artwork
