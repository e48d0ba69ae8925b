#pragma once

#include "platform/Permissions.h"
#include "platform/macos/PostEventAccess.h"

namespace kestrel {

// The permission to post keyboard events: the Accessibility list of the system settings.
class AccessibilityPermissions final : public Permissions {
public:
    explicit AccessibilityPermissions(std::shared_ptr<PostEventAccess> access);

    bool mayPostKeyEvents() override;
    void requestKeyEvents() override;
    void showKeyEventSettings() override;

private:
    std::shared_ptr<PostEventAccess> m_access;
};

} // namespace kestrel
