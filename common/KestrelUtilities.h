#pragma once

#include "pictures/InterfaceImage.h"

#include <QRectF>
#include <QString>

#include <cstdint>

namespace kestrel {

// Stateless operations that several folders of the interface share.
class KestrelUtilities {
public:
    KestrelUtilities() = delete;

    // The PNG of that name among the resources. The name has no extension and may contain folders.
    // A null image if there is none.
    [[nodiscard]] static InterfaceImage imageAtPath(const QString& path);

    // Units of `rect` per unit of `image` on each axis; infinite for a null image. Text
    // (`viewDisplay`) and all else have the same ratio.
    static void getDrawRatio(const QRectF& rect, const InterfaceImage& image, double& widthRatio,
        double& heightRatio, bool viewDisplay);

    // Modifier glyphs, "+" and the key's name; empty for a key without a name. Uses the low 32 bits
    // of the flags, and ignores the key code.
    [[nodiscard]] static QString getShortcutKey(
        std::uint64_t keyFlags, std::uint64_t keyCode, const QString& inputStr);
};

} // namespace kestrel
