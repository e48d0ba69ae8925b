#pragma once

#include "platform/Notices.h"
#include "platform/Permissions.h"

namespace kestrel {

// The permission to post keyboard events. A notice says that it is missing for as long as it is.
// The system's question is asked once, when a key is first refused or the notice is first chosen.
// After that, choosing the notice opens the settings. Main thread only.
class KeyPermission final : public Permissions, public Notices {
public:
    // Both outlive this object.
    KeyPermission(Permissions& system, Notices& session);

    bool mayPostKeyEvents() override { return m_system.mayPostKeyEvents(); }
    void requestKeyEvents() override;
    void showKeyEventSettings() override { m_system.showKeyEventSettings(); }

    // Leads the user to where the permission is given.
    void offer();

    // The missing permission first, then the notices of the session.
    std::vector<Notice> current() override;

private:
    Permissions& m_system;
    Notices& m_session;
    bool m_requested = false;
};

} // namespace kestrel
