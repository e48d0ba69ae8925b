#include "tools/artwork/IconSet.h"

#include <QImage>
#include <QtEndian>

#include <initializer_list>

namespace kestrel::artwork {

namespace {

constexpr qsizetype LengthField = 4;

struct PngEntry {
    const char* type;
    int edge;
};

// The entries that hold PNG files, those for plain screens first. 64 pixels are 32 points at high
// resolution.
constexpr PngEntry PngEntries[] = {
    { "ic07", 128 },
    { "ic08", 256 },
    { "ic09", 512 },
    { "ic11", 32 },
    { "ic12", 64 },
    { "ic13", 256 },
    { "ic14", 512 },
    { "ic10", 1024 },
};

// The entries for 16 and 32 points on plain screens. macOS does not show PNG files of these sizes
// for applications, so they hold pixels and mask separately.
struct PixelEntry {
    const char* type;
    const char* maskType;
    int edge;
};
constexpr PixelEntry PixelEntries[] = { { "is32", "s8mk", 16 }, { "il32", "l8mk", 32 } };

QByteArray lengthField(qsizetype length)
{
    QByteArray field(LengthField, '\0');
    qToBigEndian(static_cast<quint32>(length), field.data());
    return field;
}

QByteArray entry(const char* type, const QByteArray& data)
{
    const QByteArray name(type);
    return name + lengthField(name.size() + LengthField + data.size()) + data;
}

using Channel = int (*)(QRgb);

QByteArray channelOf(const QImage& image, Channel channel)
{
    QByteArray bytes;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            bytes.append(static_cast<char>(channel(image.pixel(x, y))));
    }
    return bytes;
}

// Encodes bytes in the run-length coding of the container, with literal runs only: macOS has been
// seen to drop a repeat run at the end, and at these sizes repeat runs save nothing.
QByteArray literalRuns(const QByteArray& bytes)
{
    constexpr qsizetype LongestRun = 128;
    QByteArray coded;
    for (qsizetype i = 0; i < bytes.size(); i += LongestRun) {
        const QByteArray run = bytes.mid(i, LongestRun);
        coded.append(static_cast<char>(run.size() - 1)).append(run);
    }
    return coded;
}

bool isPicture(const QByteArray& png, int edge)
{
    const QImage image = QImage::fromData(png, "PNG");
    return image.width() == edge && image.height() == edge;
}

} // namespace

std::optional<QByteArray> iconSet(const std::function<QByteArray(int edge)>& png)
{
    QByteArray entries;
    for (const auto& [type, maskType, edge] : PixelEntries) {
        const QByteArray file = png(edge);
        if (!isPicture(file, edge))
            return {};
        const QImage image = QImage::fromData(file, "PNG");
        QByteArray colours;
        for (const Channel channel : std::initializer_list<Channel> { qRed, qGreen, qBlue })
            colours += literalRuns(channelOf(image, channel));
        entries += entry(type, colours) + entry(maskType, channelOf(image, qAlpha));
    }
    for (const auto& [type, edge] : PngEntries) {
        const QByteArray file = png(edge);
        if (!isPicture(file, edge))
            return {};
        entries += entry(type, file);
    }
    return entry("icns", entries);
}

} // namespace kestrel::artwork
