#pragma once

#include "common/InterfaceImage.h"

#include <QRectF>
#include <QString>

#include <cstdint>

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

    // Modifier glyphs, "+" and the key's name; empty for a key without a name. Only the low 32
    // bits of the flags and nothing of the key code matter.
    [[nodiscard]] static QString getShortcutKey(
        std::uint64_t keyFlags, std::uint64_t keyCode, const QString& inputStr);
};

} // namespace kestrel
