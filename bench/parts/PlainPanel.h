#pragma once

#include "panel/PlugInPanelView.h"

#include <QImage>

namespace kestrel::bench {

// Paints a panel in the plainest way there is: rows copied, pixels blended one by one. It knows
// the two natural sizes only (density 1 or 2) and is what the real drawing is measured against.
class PlainPanel {
public:
    PlainPanel(const PlugInPanelView& view, int density);

    void copyBackground(QImage& target) const;
    void paint(QImage& target) const;

private:
    [[nodiscard]] const QImage& picture(const InterfaceImage& image) const;
    void blit(QImage& target, const InterfaceImage& image, int cell, QSize cellSize, int left,
        int bottom) const;

    const PlugInPanelView& m_view;
    int m_density;
};

} // namespace kestrel::bench
