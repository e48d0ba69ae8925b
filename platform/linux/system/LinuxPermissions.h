#pragma once

#include "platform/Permissions.h"

namespace kestrel {

// X11 has no such permission: every client of the X server may post keyboard events.
class LinuxPermissions final : public Permissions {
public:
    bool mayPostKeyEvents() override { return true; }
    void requestKeyEvents() override { }
    void showKeyEventSettings() override { }
};

} // namespace kestrel
