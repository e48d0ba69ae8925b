#pragma once

#include "assign/ButtonEntry.h"
#include "platform/KeyEvents.h"

#include <cstddef>

namespace kestrel {

class Permissions;
class StoredAssignments;
class Workspace;

// Posts the shortcuts of a console key into the user's session, but only while Pro Tools is the
// frontmost application. Main thread only.
class KeystrokePoster {
public:
    static constexpr unsigned int PressedBit = 0x40; // set in the button code of a press

    // All arguments outlive the poster. It requests the permission after each event that the system
    // does not permit.
    KeystrokePoster(const StoredAssignments& assignments, Workspace& workspace,
        KeyEvents& keyEvents, Permissions& permissions);

    // `buttonCode` is the value from the console: 0 to 11 for the release of keys 1 to 12, 64 to 75
    // for their press. Other codes post nothing.
    void eventKeyPost(unsigned int buttonCode);

    // Posts the shortcut record at `offset` (0, 4, 8 or 12) of a button entry; an unused record
    // posts nothing.
    void myEventPost(std::size_t offset, const ArchiveArray& srcArry, bool keyStatus);

    void postKeyEvent(KeyCode keyCode, bool keyDown);

private:
    [[nodiscard]] bool workstationIsFrontmost();
    void releaseModifiers(ModifierFlags flags);
    void heed(KeyEvents::Result result);

    const StoredAssignments& m_assignments;
    Workspace& m_workspace;
    KeyEvents& m_keyEvents;
    Permissions& m_permissions;
};

} // namespace kestrel
