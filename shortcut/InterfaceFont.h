#pragma once

#include <QFont>
#include <QGuiApplication>

namespace kestrel {

// The system font at the small system font size, which is 11 units in a window of fixed size.
[[nodiscard]] inline QFont smallSystemFont()
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(11);
    return font;
}

} // namespace kestrel
