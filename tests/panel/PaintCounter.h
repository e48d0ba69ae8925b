#pragma once

#include <QEvent>
#include <QPaintEvent>
#include <QRegion>
#include <QWidget>

namespace kestrel::test {

// Counts how often a widget is painted.
class PaintCounter : public QObject {
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++count;
            painted += static_cast<QPaintEvent*>(event)->region();
        }
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
    QRegion painted;
};

} // namespace kestrel::test
