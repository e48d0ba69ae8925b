#include "panel/PaintedPanel.h"

#include "panel/PanelCanvas.h"

namespace kestrel {

namespace {
QRect outwards(const QRectF& rect, double horizontal, double vertical)
{
    return QRectF(rect.left() * horizontal, rect.top() * vertical, rect.width() * horizontal,
        rect.height() * vertical)
        .toAlignedRect();
}
} // namespace

void PaintedPanel::paint(
    QPainter& painter, const QRect& content, const QRect& dirty, const Scene& scene)
{
    double horizontal = 1; // device pixels per unit of the painter
    double vertical = 1;
    const QTransform& device = painter.deviceTransform();
    if (device.type() <= QTransform::TxScale && device.m11() > 0 && device.m22() > 0) {
        horizontal = device.m11();
        vertical = device.m22();
    }
    const QSize pixels(qRound(content.width() * horizontal), qRound(content.height() * vertical));
    if (pixels.isEmpty())
        return;
    bringUpToDate(pixels, content.size(), scene);

    const QRect part
        = outwards((dirty & content).translated(-content.topLeft()), horizontal, vertical)
        & m_pixels.rect();
    painter.save();
    painter.translate(content.topLeft());
    // The painter's unit becomes the device pixel: copying needs no transformation.
    painter.scale(1 / horizontal, 1 / vertical);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(part.topLeft(), m_pixels, part);
    painter.restore();
}

void PaintedPanel::bringUpToDate(QSize pixels, QSize view, const Scene& scene)
{
    const auto format = scene.isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    if (canStretch(pixels, format, scene))
        return stretch(pixels);
    QRegion stale;
    if (m_pixels.size() != pixels || m_pixels.format() != format || !m_drawn.isNull()) {
        m_sprites.clear();
        m_drawn = {};
        m_pixels = {}; // first, so that two of them never need memory at once
        m_pixels = QImage(pixels, format);
        stale = m_pixels.rect();
    } else {
        const double horizontal = static_cast<double>(pixels.width()) / view.width();
        const double vertical = static_cast<double>(pixels.height()) / view.height();
        for (const QRect& part : scene.changedSince(m_shown))
            stale += outwards(part, horizontal, vertical);
    }
    if (stale.isEmpty())
        return;
    PanelCanvas canvas(m_pixels, view, stale, m_sprites);
    scene.draw(canvas);
    m_shown = scene.state;
}

bool PaintedPanel::canStretch(QSize pixels, QImage::Format format, const Scene& scene) const
{
    const bool isDifferent = m_pixels.size() != pixels || !m_drawn.isNull();
    return scene.isPassing && isDifferent && !m_pixels.isNull() && m_pixels.format() == format
        && scene.changedSince(m_shown).isEmpty();
}

void PaintedPanel::stretch(QSize pixels)
{
    if (m_pixels.size() == pixels)
        return;
    if (m_drawn.isNull()) {
        m_drawn = m_pixels;
        m_sprites.clear(); // their sizes have passed
    }
    m_pixels = {}; // first, so that two stretched ones never need memory at once
    m_pixels = QImage(pixels, m_drawn.format());
    QPainter painter(&m_pixels);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(m_pixels.rect(), m_drawn);
}

} // namespace kestrel
