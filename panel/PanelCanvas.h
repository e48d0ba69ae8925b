#pragma once

#include "panel/SpriteCache.h"

#include <QPainter>
#include <QRectF>
#include <QRegion>

namespace kestrel {

// Paints the pieces of the panel. Callers give rectangles in units of the view with the origin at
// the bottom left and y upwards; only this class converts them to pixels, whose y runs downwards.
// Each piece covers whole pixels, so that all cells of a row look alike at every size.
class PanelCanvas {
public:
    // `pixels` shows the whole view of size `view`. Only the pixels of `wanted` are painted.
    PanelCanvas(QImage& pixels, QSize view, const QRegion& wanted, SpriteCache& sprites);

    // Converts `rect`, measured from the bottom left of `content`, to coordinates measured from the
    // top left.
    [[nodiscard]] static QRectF fromBottomLeft(const QRectF& rect, const QRectF& content);

    // The pixels of the view that a piece drawn at `destination` may touch. Empty when
    // `destination` cannot be painted.
    [[nodiscard]] static QRect covered(const QRectF& destination, const QRectF& content);

    // The place that the light of a piece reaches. Empty for a piece without light.
    [[nodiscard]] static QRectF lightPlace(
        const InterfaceImage& image, const QRectF& source, const QRectF& destination);

    // False if nothing that is drawn at `destination` would be painted.
    [[nodiscard]] bool touches(const QRectF& destination) const;

    void fill(const QColor& colour);

    // `source` is in units of the picture; the part outside the picture paints nothing. A null
    // picture or a destination that is not finite paints nothing either.
    void draw(const InterfaceImage& image, const QRectF& source, const QRectF& destination,
        QPainter::CompositionMode operation);

    // Draws the light that the piece throws on what has been painted before.
    void drawLight(const InterfaceImage& image, const QRectF& source, const QRectF& destination);

private:
    [[nodiscard]] QRect onDevice(const QRectF& destination) const;

    QPainter m_painter;
    SpriteCache& m_sprites;
    QRegion m_wanted;
    QRect m_wantedBounds;
    QRectF m_wantedInView; // from the bottom left
    QRectF m_content;
    double m_horizontal; // pixels per unit of the view
    double m_vertical;
};

} // namespace kestrel
