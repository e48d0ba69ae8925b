#pragma once

#include "platform/WindowTraits.h"

namespace kestrel {

// Traits of the NSWindow of a view. Apply them after the window's flags and size limits: Qt resets
// style, level and behaviour with new flags, and with new size limits it sets resize increments,
// which cancel the aspect ratio.
class AppKitWindowTraits final : public WindowTraits {
public:
    void setContentAspectRatio(NativeWindow view, int width, int height) override;
    void setFloating(NativeWindow view) override;
    void setNeverFocused(NativeWindow view) override;
    void orderFront(NativeWindow view) override;
    bool isSizeGiven(NativeWindow) override { return false; } // Qt tells of every such state
};

} // namespace kestrel
