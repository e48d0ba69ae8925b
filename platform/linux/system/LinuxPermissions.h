#pragma once

#include "platform/Permissions.h"

namespace kestrel {

// Whoever reaches the X server may post keyboard events there.
class LinuxPermissions final : public Permissions {
public:
    bool mayPostKeyEvents() override { return true; }
    void requestKeyEvents() override { }
    void showKeyEventSettings() override { }
};

} // namespace kestrel
