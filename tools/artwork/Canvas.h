#pragma once

#include <QImage>
#include <QPainter>

namespace kestrel::artwork {

// A picture being drawn: coordinates are units (y downwards), pixels are `scale` to the unit.
class Canvas {
public:
    enum class Backing { Opaque, Transparent };

    Canvas(QSize units, int scale, Backing backing);

    QPainter& painter() { return m_painter; }
    [[nodiscard]] int scale() const { return m_scale; }
    [[nodiscard]] QSize units() const { return m_units; }

    // Direct access to the pixels; only while nothing has been painted yet.
    [[nodiscard]] QImage& pixels() { return m_image; }

    // The finished picture in the form in which a PNG file stores it; the canvas is spent.
    [[nodiscard]] QImage take();

private:
    QSize m_units;
    int m_scale;
    Backing m_backing;
    QImage m_image;
    QPainter m_painter;
};

} // namespace kestrel::artwork
