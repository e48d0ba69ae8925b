#pragma once

#include "pictures/InterfaceImage.h"

namespace kestrel {

// The pictures of shortcut fields and their clear buttons, loaded once for the whole run. The
// controls do not draw them by themselves: a window sets the pictures of its clear buttons.
struct ShortcutImages {
    InterfaceImage FiledEnableImage;
    InterfaceImage FieldDisableImage;
    InterfaceImage ClearButtonImage;
    InterfaceImage ClearButtonOnPressImage;
    InterfaceImage ClearButtonDisableImage;

    [[nodiscard]] static const ShortcutImages& shared();
};

} // namespace kestrel
