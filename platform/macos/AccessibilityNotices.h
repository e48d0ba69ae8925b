#pragma once

#include "platform/Notices.h"
#include "platform/macos/PostEventAccess.h"

namespace kestrel {

// Says that the permission to post keyboard events is missing, for as long as it is.
class AccessibilityNotices final : public Notices {
public:
    explicit AccessibilityNotices(std::shared_ptr<PostEventAccess> access);

    std::vector<Notice> current() override;

private:
    std::shared_ptr<PostEventAccess> m_access;
};

} // namespace kestrel
