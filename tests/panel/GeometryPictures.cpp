#include "tests/panel/GeometryPictures.h"

#include <QPainter>

namespace kestrel::test::GeometryPictures {

namespace {
QImage backgroundPicture(int density)
{
    QImage image(782 * (density + 1), 220 * (density + 1), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, background(x, y, density));
    }
    return image;
}

template <typename Colour>
QImage column(int cells, QSize cellSize, int density, const Colour& colourOf)
{
    const QSize size = cellSize * (density + 1);
    QImage image(size.width(), size.height() * cells, QImage::Format_RGB32);
    QPainter painter(&image);
    for (int i = 0; i < cells; ++i)
        painter.fillRect(0, i * size.height(), size.width(), size.height(), QColor(colourOf(i)));
    return image;
}

QImage drawn(const QString& name, int density)
{
    if (name == "back")
        return backgroundPicture(density);
    if (name == "text")
        return column(128, { 8, 13 }, density, [=](int code) { return cell(code, density); });
    if (name == "knob67x67")
        return column(128, { 67, 67 }, density, [=](int value) { return frame(value, density); });
    if (name.startsWith("btn_")) // the unlit lamp is the upper frame
        return column(2, { 67, 67 }, density, [&](int i) { return lamp(name, i == 1, density); });
    return {};
}
} // namespace

QRgb background(int x, int y, int density)
{
    return qRgb(x % 251, y % 241, 10 + 10 * density);
}

QRgb cell(int code, int density)
{
    return qRgb(code, 255, 100 + density);
}

QRgb frame(int value, int density)
{
    return qRgb(255, value, 150 + density);
}

QRgb lamp(const QString& image, bool lit, int density)
{
    const int kind = image == "btn_red" ? 1 : image == "btn_orange" ? 2 : 3;
    return qRgb(lit ? 250 : 50, 10 * kind, 200 + density);
}

InterfaceImage named(const QString& name)
{
    return InterfaceImage(drawn(name, Single), drawn(name, Doubled));
}

} // namespace kestrel::test::GeometryPictures
