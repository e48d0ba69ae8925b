#pragma once

#include "platform/Permissions.h"

namespace kestrel {

// Here every program of the session may post keyboard events, and there is nobody to ask.
class LinuxPermissions final : public Permissions {
public:
    [[nodiscard]] bool mayPostKeyEvents() override { return true; }
    void requestKeyEvents() override { }
};

} // namespace kestrel
