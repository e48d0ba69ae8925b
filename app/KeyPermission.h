#pragma once

#include "platform/Notices.h"
#include "platform/Permissions.h"

namespace kestrel {

// The permission to post keyboard events as the rest of the program sees it. However many keys are
// kept back, the system's question comes once; after that a notice says what is missing, for as
// long as it is, and leads to the settings. Main thread only.
class KeyPermission final : public Permissions, public Notices {
public:
    // Both outlive it.
    KeyPermission(Permissions& system, Notices& session);

    bool mayPostKeyEvents() override { return m_system.mayPostKeyEvents(); }
    void requestKeyEvents() override;
    void showKeyEventSettings() override { m_system.showKeyEventSettings(); }

    // The missing permission, and behind it what the session has to say.
    std::vector<Notice> current() override;

private:
    Permissions& m_system;
    Notices& m_session;
    bool m_requested = false;
};

} // namespace kestrel
