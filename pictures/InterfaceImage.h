#pragma once

#include "pictures/DrawnPicture.h"

#include <QImage>
#include <QSizeF>
#include <QString>

#include <memory>

namespace kestrel {

// A picture of the interface: drawn in any size, or unpacked in both pixel densities. Sizes and
// source rectangles are in units: one unit is one pixel of the single-density picture. Main thread
// only.
class InterfaceImage {
public:
    InterfaceImage() = default; // a null picture of size 0 × 0
    explicit InterfaceImage(QImage single, QImage doubled = {});
    explicit InterfaceImage(std::shared_ptr<const DrawnPicture> drawn);

    // Finds a picture in the application's resources. The name may contain folders and has no
    // extension. The result is null if the picture does not exist or cannot be read. The pixels are
    // unpacked on first use: the setup window, which has most of the pictures, may never be opened.
    // A picture whose pixels turn out to be unreadable becomes null at that time.
    [[nodiscard]] static InterfaceImage named(const QString& name);

    [[nodiscard]] bool isNull() const;
    [[nodiscard]] bool isOpaque() const; // false for a null picture
    [[nodiscard]] QSizeF size() const { return isNull() ? QSizeF(0, 0) : QSizeF(m_size); }
    [[nodiscard]] double width() const { return size().width(); }
    [[nodiscard]] double height() const { return size().height(); }

    // The drawing, if the picture is drawn.
    [[nodiscard]] const DrawnPicture* drawn() const { return m_drawn.get(); }

    // The part `source` of the picture in any size.
    [[nodiscard]] QImage piece(const QRect& source, QSize pixels) const;

    // The pixels of a picture that is not drawn.
    [[nodiscard]] const QImage& single() const;
    // The picture with twice as many pixels in each direction. Null if it does not exist.
    [[nodiscard]] const QImage& doubled() const;

private:
    struct Pixels; // shared by the copies of a picture, so that they are unpacked once

    QSize m_size { 0, 0 };
    std::shared_ptr<Pixels> m_pixels;
    std::shared_ptr<const DrawnPicture> m_drawn;
};

} // namespace kestrel
