#include "common/InterfaceImage.h"

#include <algorithm>
#include <utility>

namespace kestrel {

namespace {
bool everyPixelIsOpaque(const QImage& argb32)
{
    for (int y = 0; y < argb32.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(argb32.constScanLine(y));
        if (!std::all_of(line, line + argb32.width(), [](QRgb p) { return qAlpha(p) == 255; }))
            return false;
    }
    return true;
}

// The two formats that are painted without conversion: opaque, or premultiplied.
QImage readyToPaint(QImage image)
{
    image.setDevicePixelRatio(1);
    if (image.isNull() || image.format() == QImage::Format_RGB32)
        return image;
    image.convertTo(QImage::Format_ARGB32);
    image.convertTo(
        everyPixelIsOpaque(image) ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    return image;
}
} // namespace

InterfaceImage::InterfaceImage(QImage single, QImage doubled)
    : m_single(readyToPaint(std::move(single)))
    , m_doubled(readyToPaint(std::move(doubled)))
{
    if (m_doubled.size() != 2 * m_single.size())
        m_doubled = {};
}

InterfaceImage InterfaceImage::named(const QString& name)
{
    const QString path = QStringLiteral(":/images/") + name;
    return InterfaceImage(
        QImage(path + QStringLiteral(".png")), QImage(path + QStringLiteral("@2x.png")));
}

} // namespace kestrel
