#pragma once

#include <QColor>

class QPalette;

namespace kestrel {

// The colours of the activity window: those of the panel, and the same on a light desktop. Each
// text colour is legible on the grounds beneath it.
struct ActivityColours {
    QColor headTop; // the head is a gradient from top to bottom
    QColor headBottom;
    QColor list;
    QColor band; // every second row of the list
    QColor selected;
    QColor line; // between the parts
    QColor text;
    QColor dim;
    QColor good;
    QColor warning;
    QColor bad;
    QColor keyTop; // of a button
    QColor keyBottom;
    QColor keyEdge;
    QColor focus;
    // The beats are drawn on a display that looks the same everywhere.
    QColor display { 0x0B, 0x3A, 0x3D };
    QColor displayLine { 0x1B, 0x59, 0x5C };
    QColor displayText { 0x9E, 0xE6, 0xDD };
    QColor displayWarning { 0xFF, 0xC1, 0x66 };

    // Those for the desktop's palette.
    [[nodiscard]] static const ActivityColours& of(const QPalette& palette);
    [[nodiscard]] static const ActivityColours& dark();
    [[nodiscard]] static const ActivityColours& light();
};

} // namespace kestrel
