#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>

#include <memory>

namespace kestrel {

// A picture of the interface in both pixel densities. Sizes and source rectangles are in units,
// that is pixels of the single-density picture, whichever density gets painted. Main thread only.
class InterfaceImage {
public:
    InterfaceImage() = default; // no picture: null, of size 0 × 0
    explicit InterfaceImage(QImage single, QImage doubled = {});

    // From the application's resources; folder parts are allowed, the extension is left out.
    // Null when there is no such picture or it cannot be read. Its pixels stay packed until they
    // are asked for: unpacking all of them takes longer than the rest of the start, and 20 MiB.
    // A picture whose pixels turn out to be unreadable then is null from then on.
    [[nodiscard]] static InterfaceImage named(const QString& name);

    [[nodiscard]] bool isNull() const;
    [[nodiscard]] bool isOpaque() const; // false for a null picture
    [[nodiscard]] QSizeF size() const { return isNull() ? QSizeF(0, 0) : QSizeF(m_size); }
    [[nodiscard]] double width() const { return size().width(); }
    [[nodiscard]] double height() const { return size().height(); }

    [[nodiscard]] const QImage& single() const;
    // Twice as many pixels each way; null when there is none.
    [[nodiscard]] const QImage& doubled() const;

private:
    struct Pixels; // shared by the copies of a picture, so that they are unpacked once

    QSize m_size { 0, 0 };
    std::shared_ptr<Pixels> m_pixels;
};

} // namespace kestrel
