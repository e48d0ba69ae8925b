#pragma once

#include "artwork/FrameStrip.h"

namespace kestrel::artwork {

enum class LampColour { Green, Red, Orange };

// Two frames of 67 × 67 units: unlit above, lit below. The key fills only the lower part of its
// frame. A lit one lights the metal and the label around it.
class LampKeys : public FrameStrip {
public:
    explicit LampKeys(LampColour colour);

    [[nodiscard]] QRectF paintedArea(const QRect& source) const override;
    [[nodiscard]] QRect lightArea(const QRect& source) const override;
    [[nodiscard]] QImage drawLight(const QRect& source, QSize pixels) const override;
    [[nodiscard]] LightMode lightMode() const override { return LightMode::Illumination; }

protected:
    void paintFrame(Canvas& canvas, int index) const override;

private:
    LampColour m_colour;
};

} // namespace kestrel::artwork
