#include "common/KestrelUtilities.h"

namespace kestrel {

InterfaceImage KestrelUtilities::imageAtPath(const QString& path)
{
    return InterfaceImage::named(path);
}

void KestrelUtilities::getDrawRatio(
    const QRectF& rect, const InterfaceImage& image, double& widthRatio, double& heightRatio, bool)
{
    widthRatio = rect.width() / image.width();
    heightRatio = rect.height() / image.height();
}

} // namespace kestrel
