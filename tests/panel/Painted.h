#pragma once

#include "panel/PlugInPanelView.h"

#include <QImage>
#include <QPainter>

// Paints a view into a picture.
namespace kestrel::test {

inline QImage painted(PlugInPanelView& view, double devicePixelRatio = 1,
    QImage::Format format = QImage::Format_RGB32)
{
    QImage image((QSizeF(view.size()) * devicePixelRatio).toSize(), format);
    image.fill(Qt::magenta);
    image.setDevicePixelRatio(devicePixelRatio);
    QPainter painter(&image);
    view.drawRect(painter, view.rect());
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

} // namespace kestrel::test
