#include "artwork/FrameStrip.h"

#include "artwork/Canvas.h"

#include <algorithm>

namespace kestrel::artwork {

QImage FrameStrip::draw(const QRect& source, QSize pixels) const
{
    Canvas canvas(QRectF(source), pixels, Canvas::Backing::Transparent);
    const int first = std::max(0, source.top() / m_frame.height());
    const int last = std::min(m_count - 1, source.bottom() / m_frame.height());
    for (int index = first; index <= last; ++index) {
        canvas.painter().save();
        canvas.painter().translate(0, index * m_frame.height());
        paintFrame(canvas, index);
        canvas.painter().restore();
    }
    return canvas.takeToPaint();
}

} // namespace kestrel::artwork
