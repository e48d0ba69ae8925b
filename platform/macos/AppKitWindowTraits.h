#pragma once

#include "platform/WindowTraits.h"

namespace kestrel {

// Traits of the NSWindow that a view is in. The toolkit sets style, level and behaviour anew when
// it is given other window flags: apply the traits after that.
class AppKitWindowTraits final : public WindowTraits {
public:
    void setContentAspectRatio(NativeWindow view, int width, int height) override;
    void setFloating(NativeWindow view) override;
    void setNeverFocused(NativeWindow view) override;
};

} // namespace kestrel
