#pragma once

#include "panel/SpriteCache.h"

#include <QPainter>
#include <QRectF>

namespace kestrel {

// Paints the pieces of the panel. Callers give rectangles with the origin at the bottom left and y
// upwards; only this class converts them to QPainter's coordinates, whose y runs downwards. Each
// piece covers whole device pixels, so that all cells of a row look alike at every size.
class PanelCanvas {
public:
    // `content` is the panel in the painter's coordinates, `dirty` the part that has to be painted.
    // The destructor restores the painter's state.
    PanelCanvas(QPainter& painter, const QRect& content, const QRect& dirty, SpriteCache& sprites);
    ~PanelCanvas();
    PanelCanvas(const PanelCanvas&) = delete;
    PanelCanvas& operator=(const PanelCanvas&) = delete;

    // Converts `rect`, measured from the bottom left of `content`, to coordinates measured from the
    // top left.
    [[nodiscard]] static QRectF fromBottomLeft(const QRectF& rect, const QRectF& content);

    // The pixels of the painter that a piece drawn at `destination` may touch. Empty when
    // `destination` cannot be painted.
    [[nodiscard]] static QRect covered(const QRectF& destination, const QRectF& content);

    void fill(const QColor& colour);

    // `source` is in units of the picture; the part outside the picture paints nothing. A null
    // picture or a destination that is not finite paints nothing either.
    void draw(const InterfaceImage& image, const QRectF& source, const QRectF& destination,
        QPainter::CompositionMode operation);

private:
    [[nodiscard]] QRect onDevice(const QRectF& destination) const;

    QPainter& m_painter;
    SpriteCache& m_sprites;
    QRectF m_content;
    double m_horizontal = 1; // device pixels per unit of the painter
    double m_vertical = 1;
    QRect m_dirty; // in device pixels from the content's top left
};

} // namespace kestrel
