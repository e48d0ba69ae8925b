#pragma once

#include "assign/ButtonEntry.h"
#include "assign/Keystroke.h"
#include "platform/KeyEvents.h"

#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>

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

    // True when eventKeyPost() would post something now.
    [[nodiscard]] bool wouldPost(unsigned int buttonCode);

    // `buttonCode` is the value from the console: 0 to 11 for the release of keys 1 to 12, 64 to 75
    // for their press. 12 and 76 mean a thirteenth key, and other codes post nothing. Returns what
    // became of it.
    Keystroke eventKeyPost(unsigned int buttonCode);

    // Posts the shortcut record at `offset` (0, 4, 8 or 12) of a button entry. An unused record
    // posts nothing and has no result.
    std::optional<KeyEvents::Result> myEventPost(
        std::size_t offset, const ArchiveArray& srcArry, bool keyStatus);

    void postKeyEvent(KeyCode keyCode, bool keyDown);

private:
    using Results = std::array<std::optional<KeyEvents::Result>, ShortcutRecordCount>;

    // Null for a code of no key, or of a key that the set does not have.
    [[nodiscard]] ButtonEntry entryOf(unsigned int index) const;
    // Otherwise `inFront` gets the name of the application that is.
    [[nodiscard]] bool workstationIsFrontmost(KeystrokeText& inFront);
    [[nodiscard]] static Keystroke describe(
        const ArchiveArray& entry, const Results& results, bool keyDown);
    void releaseModifiers(ModifierFlags flags);
    void heed(KeyEvents::Result result);

    const StoredAssignments& m_assignments;
    Workspace& m_workspace;
    KeyEvents& m_keyEvents;
    Permissions& m_permissions;
};

} // namespace kestrel
