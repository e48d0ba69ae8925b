#pragma once

#include <QAccessible>
#include <QRect>
#include <QString>

namespace kestrel {

// A text on the background of the setup window. `frame` is in units of the content, with the origin
// at the upper left. In reading order the engraving stands before the control `next`.
struct Engraving {
    QAccessible::Role role = QAccessible::StaticText;
    QString text;
    QRect frame;
    const QWidget* next = nullptr;
};

} // namespace kestrel
