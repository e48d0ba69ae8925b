#pragma once

#include "common/InterfaceImage.h"

#include <QRectF>
#include <QString>

namespace kestrel {

// Operations without state that several parts of the interface share.
class KestrelUtilities {
public:
    KestrelUtilities() = delete;

    // The png of that name, which has no extension and may have folder parts; null if there is
    // none.
    [[nodiscard]] static InterfaceImage imageAtPath(const QString& path);

    // How many units of `rect` one unit of `image` takes, on each axis; infinite for a null image.
    // Text (`viewDisplay`) and everything else scale alike.
    static void getDrawRatio(const QRectF& rect, const InterfaceImage& image, double& widthRatio,
        double& heightRatio, bool viewDisplay);
};

} // namespace kestrel
