#pragma once

namespace kestrel::artwork {

class Canvas;

// Draws the display of the panel's face, dark: its bezel, its glass and all its unlit dots.
void drawDisplayGlass(Canvas& canvas);

} // namespace kestrel::artwork
