#pragma once

#include <QColor>
#include <QRectF>

namespace kestrel::artwork {

class Canvas;

// A console key: a dark bezel around a slightly rounded cap.
struct KeyCap {
    QRectF rect; // the outer edge of the bezel
    double radius = 5.0;
    double rim = 1.6;
    QColor top = Qt::black;
    QColor bottom = Qt::black;
    QColor shine = QColor(255, 255, 255, 60);
    QColor bezel = QColor(9, 9, 10);
    bool pressed = false;
};

void drawKeyCap(Canvas& canvas, const KeyCap& key);

} // namespace kestrel::artwork
