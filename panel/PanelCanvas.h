#pragma once

#include "panel/SpriteCache.h"

#include <QPainter>
#include <QRectF>

namespace kestrel {

// Where the panel is painted. All rectangles that come in have their origin at the bottom left and
// y upwards; this class alone turns them into the painter's, which start at the top. Pieces are
// painted onto whole device pixels, so that all cells of a row look alike at every size.
class PanelCanvas {
public:
    // `content` is the panel within the painter's coordinates, `dirty` what has to be painted of
    // it. The painter is given back as it was when the canvas goes.
    PanelCanvas(QPainter& painter, const QRect& content, const QRect& dirty, SpriteCache& sprites);
    ~PanelCanvas();
    PanelCanvas(const PanelCanvas&) = delete;
    PanelCanvas& operator=(const PanelCanvas&) = delete;

    // `rect` with its origin at the bottom left of a `content`, in coordinates from the top left.
    [[nodiscard]] static QRectF fromBottomLeft(const QRectF& rect, const QRectF& content);

    // Every pixel of the painter that a piece drawn there may touch; empty for one without a place.
    [[nodiscard]] static QRect covered(const QRectF& destination, const QRectF& content);

    void fill(const QColor& colour);

    // `source` in units of the picture. What lies outside of the picture paints nothing, and so do
    // a null picture and a destination that has no finite place.
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
