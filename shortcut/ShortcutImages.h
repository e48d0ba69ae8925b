#pragma once

#include "common/InterfaceImage.h"

namespace kestrel {

// The pictures of shortcut fields and their clear buttons, loaded once for the whole run. Neither
// control draws them on its own: a window gives its clear buttons the pictures they show.
struct ShortcutImages {
    InterfaceImage FiledEnableImage;
    InterfaceImage FieldDisableImage;
    InterfaceImage ClearButtonImage;
    InterfaceImage ClearButtonOnPressImage;
    InterfaceImage ClearButtonDisableImage;

    [[nodiscard]] static const ShortcutImages& shared();
};

} // namespace kestrel
