#include "pictures/InterfaceImage.h"

#include <QFile>
#include <QImageReader>

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

// Reads PNG, the format of every picture. Naming it keeps Qt from loading the plug-ins of other
// formats.
class PngReader : public QImageReader {
public:
    explicit PngReader(const QString& path)
        : QImageReader(path, "png")
    {
        setAutoDetectImageFormat(false);
    }
};

// Converts to RGB32 (opaque) or ARGB32_Premultiplied, which QPainter draws without conversion.
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

// A path becomes empty when its file is unpacked. Both are empty if the pixels were given directly.
struct InterfaceImage::Pixels {
    QString singlePath;
    QString doubledPath;
    QImage single;
    QImage doubled;
    bool isUnreadable = false;
};

InterfaceImage::InterfaceImage(QImage single, QImage doubled)
    : m_size(single.size())
{
    if (single.isNull())
        return;
    if (doubled.size() != 2 * m_size)
        doubled = {};
    m_pixels = std::make_shared<Pixels>(Pixels {
        {}, {}, readyToPaint(std::move(single)), readyToPaint(std::move(doubled)), false });
}

InterfaceImage::InterfaceImage(std::shared_ptr<const DrawnPicture> drawn)
    : m_size(drawn->size())
    , m_drawn(std::move(drawn))
{
}

InterfaceImage InterfaceImage::named(const QString& name)
{
    const QString path = QStringLiteral(":/images/") + name;
    const QString singlePath = path + QStringLiteral(".png");
    const QString doubledPath = path + QStringLiteral("@2x.png");
    InterfaceImage image;
    const QSize size = QFile::exists(singlePath) ? PngReader(singlePath).size() : QSize();
    if (size.isEmpty())
        return image;
    image.m_size = size;
    image.m_pixels = std::make_shared<Pixels>(
        Pixels { singlePath, QFile::exists(doubledPath) ? doubledPath : QString(), {}, {}, false });
    return image;
}

bool InterfaceImage::isNull() const
{
    return !m_drawn && (!m_pixels || m_pixels->isUnreadable);
}

bool InterfaceImage::isOpaque() const
{
    if (m_drawn)
        return m_drawn->isOpaque();
    const QImage& pixels = single();
    return !pixels.isNull() && !pixels.hasAlphaChannel();
}

QImage InterfaceImage::piece(const QRect& source, QSize pixels) const
{
    if (m_drawn)
        return m_drawn->draw(source, pixels);
    // The finer picture is also the better one to scale down.
    const bool finer = pixels != source.size() && !doubled().isNull();
    const QImage part = finer ? doubled().copy({ source.topLeft() * 2, source.size() * 2 })
                              : single().copy(source);
    // Cuts before scaling: in a picture scaled as a whole, cells would bleed into their neighbours.
    return pixels == part.size()
        ? part
        : part.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

const QImage& InterfaceImage::single() const
{
    static const QImage none;
    if (!m_pixels)
        return none;
    if (!m_pixels->singlePath.isEmpty()) {
        m_pixels->single = readyToPaint(PngReader(std::exchange(m_pixels->singlePath, {})).read());
        m_pixels->isUnreadable = m_pixels->single.size() != m_size;
    }
    return m_pixels->single;
}

const QImage& InterfaceImage::doubled() const
{
    static const QImage none;
    if (!m_pixels)
        return none;
    if (!m_pixels->doubledPath.isEmpty()) {
        QImage doubled = PngReader(std::exchange(m_pixels->doubledPath, {})).read();
        if (doubled.size() == 2 * m_size)
            m_pixels->doubled = readyToPaint(std::move(doubled));
    }
    return m_pixels->doubled;
}

} // namespace kestrel
