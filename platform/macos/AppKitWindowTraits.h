#pragma once

#include "platform/WindowTraits.h"

namespace kestrel {

// Traits of the NSWindow that a view is in. Qt sets style, level and behaviour anew when a window
// is given other flags, and resize increments, which rule out an aspect ratio, when it is given
// other size limits: apply the traits after that.
class AppKitWindowTraits final : public WindowTraits {
public:
    void setContentAspectRatio(NativeWindow view, int width, int height) override;
    void setFloating(NativeWindow view) override;
    void setNeverFocused(NativeWindow view) override;
};

} // namespace kestrel
