#pragma once

#include "artwork/FrameStrip.h"

namespace kestrel::artwork {

// One frame of 67 × 67 units for each of the 128 ring values, value 0 at the top. The panel leaves
// out those that no ring can show.
class KnobStrip : public FrameStrip {
public:
    KnobStrip();

    [[nodiscard]] QRectF paintedArea(const QRect& source) const override;

protected:
    void paintFrame(Canvas& canvas, int value) const override;
};

// True if the value lights the lamp of the ring. Lamps are 1 to 11.
[[nodiscard]] bool isRingLampLit(int value, int lamp);

} // namespace kestrel::artwork
