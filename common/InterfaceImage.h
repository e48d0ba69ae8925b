#pragma once

#include <QImage>
#include <QSizeF>
#include <QString>

namespace kestrel {

// A picture of the interface in both pixel densities. Sizes and source rectangles are in units,
// that is pixels of the single-density picture, whichever density gets painted.
class InterfaceImage {
public:
    InterfaceImage() = default; // no picture: null, of size 0 × 0
    explicit InterfaceImage(QImage single, QImage doubled = {});

    // From the application's resources; folder parts are allowed, the extension is left out.
    // Null when there is no such picture or it cannot be read.
    [[nodiscard]] static InterfaceImage named(const QString& name);

    [[nodiscard]] bool isNull() const { return m_single.isNull(); }
    [[nodiscard]] bool isOpaque() const { return !m_single.hasAlphaChannel(); }
    [[nodiscard]] QSizeF size() const { return m_single.size(); }
    [[nodiscard]] double width() const { return m_single.width(); }
    [[nodiscard]] double height() const { return m_single.height(); }

    [[nodiscard]] const QImage& single() const { return m_single; }
    // Twice as many pixels each way; null when there is none.
    [[nodiscard]] const QImage& doubled() const { return m_doubled; }

private:
    QImage m_single;
    QImage m_doubled;
};

} // namespace kestrel
