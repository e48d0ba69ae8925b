#include "assign/KeystrokePoster.h"

#include "assign/StoredAssignments.h"
#include "assign/UserAssignFile.h"
#include "platform/Permissions.h"
#include "platform/Workspace.h"
#include "platform/Workstation.h"

#include <array>

namespace kestrel {

namespace {
constexpr unsigned int LastButtonCode = 12; // one past the code of the last key

struct ModifierRelease {
    ModifierFlags flag;
    KeyCode keyCode;
};

// The modifier keys in the order in which they are released.
constexpr std::array<ModifierRelease, 4> ModifierReleases { {
    { Modifier::Control, ModifierKey::Control },
    { Modifier::Shift, ModifierKey::Shift },
    { Modifier::Option, ModifierKey::Option },
    { Modifier::Command, ModifierKey::Command },
} };

KeyEvents::Direction direction(bool keyDown)
{
    return keyDown ? KeyEvents::Direction::Down : KeyEvents::Direction::Up;
}
} // namespace

KeystrokePoster::KeystrokePoster(const StoredAssignments& assignments, Workspace& workspace,
    KeyEvents& keyEvents, Permissions& permissions)
    : m_assignments(assignments)
    , m_workspace(workspace)
    , m_keyEvents(keyEvents)
    , m_permissions(permissions)
{
}

void KeystrokePoster::eventKeyPost(unsigned int buttonCode)
{
    if (!workstationIsFrontmost())
        return;
    const bool keyDown = buttonCode >= PressedBit;
    const unsigned int index = keyDown ? buttonCode - PressedBit : buttonCode;
    if (index > LastButtonCode)
        return;
    const auto set = m_assignments.myUserAssignFile();
    const ButtonEntry entry = set ? set->getSwitchShortcut(static_cast<int>(index) + 1) : nullptr;
    if (!entry)
        return;
    for (std::size_t offset = 0; offset < ButtonEntrySize; offset += ShortcutRecordSize)
        myEventPost(offset, *entry, keyDown);
}

bool KeystrokePoster::workstationIsFrontmost()
{
    bool frontmost = false;
    m_workspace.visitActiveApplications([&frontmost](std::string_view localizedName) {
        frontmost = localizedName == Workstation::Name;
        return !frontmost;
    });
    return frontmost;
}

void KeystrokePoster::myEventPost(std::size_t offset, const ArchiveArray& srcArry, bool keyStatus)
{
    if (offset + ShortcutRecord::Repeat >= srcArry.size())
        return;
    if (srcArry[offset + ShortcutRecord::Text].text().isEmpty())
        return;
    const auto flags
        = static_cast<ModifierFlags>(srcArry[offset + ShortcutRecord::Modifiers].toInt32())
        & Modifier::Used;
    const KeyCode keyCode = srcArry[offset + ShortcutRecord::KeyCode].toUInt16();
    const bool repeats = keyStatus && srcArry[offset + ShortcutRecord::Repeat].toInt32() != 0;

    heed(m_keyEvents.post(keyCode, direction(keyStatus), flags,
        repeats ? KeyEvents::AutoRepeat::Yes : KeyEvents::AutoRepeat::No));
    releaseModifiers(flags);
}

// Posts a key-up for each modifier after every key-down and key-up, so that no modifier stays held.
void KeystrokePoster::releaseModifiers(ModifierFlags flags)
{
    for (const auto& [flag, keyCode] : ModifierReleases) {
        if (flags & flag)
            postKeyEvent(keyCode, false);
    }
}

void KeystrokePoster::postKeyEvent(KeyCode keyCode, bool keyDown)
{
    heed(m_keyEvents.postBare(keyCode, direction(keyDown)));
}

// Other failures (unknown key, lost session) need no action: the next key tries again.
void KeystrokePoster::heed(KeyEvents::Result result)
{
    if (result == KeyEvents::Result::NotPermitted)
        m_permissions.requestKeyEvents();
}

} // namespace kestrel
