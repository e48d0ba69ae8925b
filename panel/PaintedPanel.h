#pragma once

#include "panel/PanelState.h"
#include "panel/SpriteCache.h"

#include <QImage>
#include <QPainter>
#include <QRegion>

#include <functional>

namespace kestrel {

class PanelCanvas;

// Keeps the panel as it was painted last, in device pixels. To paint it again is to copy these
// pixels; only the parts whose values have changed are drawn anew. At a size that passes, they are
// stretched, unless a value has changed.
class PaintedPanel {
public:
    // What is painted.
    struct Scene {
        PanelState state;
        bool isOpaque; // every pixel of it
        bool isPassing; // its size will soon be another one
        // The part of the view, in its coordinates, that `shown` shows differently.
        std::function<QRegion(const PanelState& shown)> changedSince;
        std::function<void(PanelCanvas& canvas)> draw;
    };

    // Paints `dirty`, a part of the view `content`, both in coordinates of `painter`.
    void paint(QPainter& painter, const QRect& content, const QRect& dirty, const Scene& scene);

private:
    void bringUpToDate(QSize pixels, QSize view, const Scene& scene);
    [[nodiscard]] bool canStretch(QSize pixels, QImage::Format format, const Scene& scene) const;
    void stretch(QSize pixels);

    QImage m_pixels;
    QImage m_drawn; // what m_pixels was stretched from; null if it was drawn itself
    PanelState m_shown;
    SpriteCache m_sprites;
};

} // namespace kestrel
