#pragma once

#include "pictures/DrawnPicture.h"

namespace kestrel::artwork {

class Canvas;

// A drawn picture of frames of the same size, one below the other.
class FrameStrip : public DrawnPicture {
public:
    FrameStrip(QSize frame, int count)
        : m_frame(frame)
        , m_count(count)
    {
    }

    [[nodiscard]] QSize size() const override
    {
        return { m_frame.width(), m_frame.height() * m_count };
    }
    [[nodiscard]] QImage draw(const QRect& source, QSize pixels) const override;

protected:
    // Draws one frame with its top left at the origin of the canvas's units.
    virtual void paintFrame(Canvas& canvas, int index) const = 0;

    // The number of the frame that begins at the top of `source`.
    [[nodiscard]] int frameAt(const QRect& source) const { return source.top() / m_frame.height(); }

private:
    QSize m_frame;
    int m_count;
};

} // namespace kestrel::artwork
