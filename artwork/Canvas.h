#pragma once

#include <QImage>
#include <QPainter>

namespace kestrel::artwork {

// A picture while it is drawn. Coordinates are in units, y downwards.
class Canvas {
public:
    enum class Backing { Opaque, Transparent };

    Canvas(QSize units, int scale, Backing backing); // a unit is `scale` pixels
    // Shows `area` in a picture of any size.
    Canvas(const QRectF& area, QSize pixels, Backing backing);

    QPainter& painter() { return m_painter; }
    [[nodiscard]] double scale() const { return m_scale; } // pixels to a unit of height
    [[nodiscard]] QSizeF units() const { return m_area.size(); }

    // Gives direct access to the pixels. Use it only before anything is painted.
    [[nodiscard]] QImage& pixels() { return m_image; }

    // The rectangle moved to whole pixels, at least one pixel wide and high, so that its edges are
    // crisp. Not for a painter that is rotated.
    [[nodiscard]] QRectF onPixels(const QRectF& units) const;

    // Returns the finished picture in the pixel format of a PNG file. Do not use the canvas
    // afterwards.
    [[nodiscard]] QImage take();

    // Returns it as QPainter draws it fastest: RGB32 or ARGB32_Premultiplied.
    [[nodiscard]] QImage takeToPaint();

private:
    QRectF m_area;
    double m_scale;
    Backing m_backing;
    QImage m_image;
    QPainter m_painter;
};

} // namespace kestrel::artwork
