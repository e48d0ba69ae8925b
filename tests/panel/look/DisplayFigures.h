#pragma once

#include "panel/PlugInPanelView.h"

#include <QImage>

namespace kestrel::test {

// How legible the display of a panel is, measured on its painted pixels.
struct DisplayFigures {
    // The contrast of the brightest 5 % of the pixels of all cells to the median of the blank ones,
    // while a plug-in is edited.
    double contrast = 0;
    // The dimmest stem of "H" and "|" beside the brightest one, 0 to 1. A stem is as bright as its
    // brightest column of pixels.
    double evenStems = 0;
    // The same of the three bars of "E".
    double evenBars = 0;
};

// Paints the view at `density` device pixels to a unit, as a window does.
[[nodiscard]] QImage paintedAt(PlugInPanelView& view, double density);

// Shows a compressor being edited: texts, rings and some lit lamps.
void showEditing(PlugInPanelView& view);

// Measures a view of its own that is `width` units wide.
[[nodiscard]] DisplayFigures displayFigures(int width, double density);

} // namespace kestrel::test
