#pragma once

#include <QImage>
#include <QPainter>

namespace kestrel::artwork {

// A picture while it is drawn. Coordinates are in units, y downwards; a unit is `scale` pixels.
class Canvas {
public:
    enum class Backing { Opaque, Transparent };

    Canvas(QSize units, int scale, Backing backing);

    QPainter& painter() { return m_painter; }
    [[nodiscard]] int scale() const { return m_scale; }
    [[nodiscard]] QSize units() const { return m_units; }

    // Gives direct access to the pixels. Use it only before anything is painted.
    [[nodiscard]] QImage& pixels() { return m_image; }

    // Returns the finished picture in the pixel format of a PNG file. Do not use the canvas
    // afterwards.
    [[nodiscard]] QImage take();

private:
    QSize m_units;
    int m_scale;
    Backing m_backing;
    QImage m_image;
    QPainter m_painter;
};

} // namespace kestrel::artwork
