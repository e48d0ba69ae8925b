#pragma once

#include "pictures/InterfaceImage.h"

namespace kestrel::artwork {

// The pictures of the panel by their names: "back", "text", "knob67x67", "btn_green", "btn_red" and
// "btn_orange". They are drawn in the size in which they are shown. A null picture for other names.
[[nodiscard]] InterfaceImage panelPicture(const QString& name);

} // namespace kestrel::artwork
