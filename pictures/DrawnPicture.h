#pragma once

#include <QImage>
#include <QRect>

namespace kestrel {

// A picture without pixels: it is drawn in the size in which it is shown. Sizes and rectangles are
// in units, with the origin at the top left.
class DrawnPicture {
public:
    DrawnPicture() = default;
    DrawnPicture(const DrawnPicture&) = delete;
    DrawnPicture& operator=(const DrawnPicture&) = delete;
    virtual ~DrawnPicture() = default;

    [[nodiscard]] virtual QSize size() const = 0;
    [[nodiscard]] virtual bool isOpaque() const { return false; }

    // Draws `source`, a part of the picture, in `pixels`: as RGB32 if the picture is opaque, else
    // as ARGB32_Premultiplied.
    [[nodiscard]] virtual QImage draw(const QRect& source, QSize pixels) const = 0;

    // The part of `source` that is painted, without its light.
    [[nodiscard]] virtual QRectF paintedArea(const QRect& source) const { return source; }

    // The area on which `source` throws light; it may reach beyond the picture. Empty: nowhere.
    [[nodiscard]] virtual QRect lightArea(const QRect&) const { return {}; }

    // Draws that light, for what lies behind the picture. Null if `source` is dark.
    [[nodiscard]] virtual QImage drawLight(const QRect&, QSize) const { return {}; }

    enum class LightMode {
        Glow, // ARGB32_Premultiplied, laid over what lies behind
        // RGB32 on black, brightens what lies behind, bright things more than dark ones
        Illumination,
    };
    [[nodiscard]] virtual LightMode lightMode() const { return LightMode::Glow; }
};

} // namespace kestrel
