#include "assign/KeystrokePoster.h"

#include "assign/PostedStroke.h"
#include "assign/StoredAssignments.h"
#include "assign/UserAssignFile.h"
#include "platform/Permissions.h"
#include "platform/Workspace.h"
#include "platform/Workstation.h"

#include <algorithm>
#include <array>

namespace kestrel {

namespace {
// The console has no such key, but a set from elsewhere may have one.
constexpr unsigned int CodeOfThirteenthKey = 12;

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

unsigned int indexOf(unsigned int buttonCode)
{
    return buttonCode >= KeystrokePoster::PressedBit ? buttonCode - KeystrokePoster::PressedBit
                                                     : buttonCode;
}

Keystroke::Outcome outcomeOf(KeyEvents::Result result, bool keyDown)
{
    switch (result) {
    case KeyEvents::Result::Posted:
        return keyDown ? Keystroke::Outcome::Typed : Keystroke::Outcome::Released;
    case KeyEvents::Result::NotPermitted:
        return Keystroke::Outcome::NotPermitted;
    case KeyEvents::Result::UnknownKey:
        return Keystroke::Outcome::KeyUnknown;
    case KeyEvents::Result::Unavailable:
        return Keystroke::Outcome::SessionUnavailable;
    }
    return Keystroke::Outcome::SessionUnavailable;
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

Keystroke KeystrokePoster::eventKeyPost(unsigned int buttonCode)
{
    Keystroke stroke;
    if (!workstationIsFrontmost(stroke.text))
        return stroke;
    const bool keyDown = buttonCode >= PressedBit;
    const unsigned int index = indexOf(buttonCode);
    const ButtonEntry entry = entryOf(index);
    if (!entry)
        return { index >= CodeOfThirteenthKey ? Keystroke::Outcome::NoSuchKey
                                              : Keystroke::Outcome::NoShortcut,
            {} };
    Results results;
    for (std::size_t record = 0; record < results.size(); ++record)
        results[record] = myEventPost(shortcutRecordOffset(record), *entry, keyDown);
    return describe(*entry, results, keyDown);
}

bool KeystrokePoster::wouldPost(unsigned int buttonCode)
{
    const ButtonEntry entry = entryOf(indexOf(buttonCode));
    KeystrokeText inFront;
    if (!entry || !workstationIsFrontmost(inFront))
        return false;
    bool isAnyUsed = false;
    for (std::size_t record = 0; record < ShortcutRecordCount; ++record)
        isAnyUsed |= postedStroke(*entry, shortcutRecordOffset(record)).has_value();
    return isAnyUsed;
}

ButtonEntry KeystrokePoster::entryOf(unsigned int index) const
{
    const auto set = m_assignments.myUserAssignFile();
    return set && index <= CodeOfThirteenthKey ? set->getSwitchShortcut(static_cast<int>(index) + 1)
                                               : nullptr;
}

bool KeystrokePoster::workstationIsFrontmost(KeystrokeText& inFront)
{
    bool frontmost = false;
    m_workspace.visitActiveApplications([&](std::string_view localizedName) {
        frontmost = localizedName == Workstation::Name;
        if (!frontmost && inFront.view().empty())
            inFront.append(localizedName);
        return !frontmost;
    });
    return frontmost;
}

std::optional<KeyEvents::Result> KeystrokePoster::myEventPost(
    std::size_t offset, const ArchiveArray& srcArry, bool keyStatus)
{
    const auto stroke = postedStroke(srcArry, offset);
    if (!stroke)
        return {};
    const bool repeats = keyStatus && srcArry[offset + ShortcutRecord::Repeat].toInt32() != 0;

    const auto result = m_keyEvents.post(stroke->code, direction(keyStatus), stroke->flags,
        repeats ? KeyEvents::AutoRepeat::Yes : KeyEvents::AutoRepeat::No);
    heed(result);
    releaseModifiers(stroke->flags);
    return result;
}

// If one shortcut was posted, the stroke is as good as posted, and the text names what was. The
// entry may have changed since: the system's question about the permission runs the main loop.
Keystroke KeystrokePoster::describe(const ArchiveArray& entry, const Results& results, bool keyDown)
{
    const auto isUsedRecord = [](const auto& result) { return result.has_value(); };
    const auto first = std::find_if(results.begin(), results.end(), isUsedRecord);
    if (first == results.end())
        return { Keystroke::Outcome::NoShortcut, {} };
    const std::optional posted(KeyEvents::Result::Posted);
    const auto telling
        = std::find(results.begin(), results.end(), posted) != results.end() ? posted : *first;
    Keystroke stroke { outcomeOf(*telling, keyDown), {} };
    for (std::size_t record = 0; record < results.size(); ++record) {
        const std::size_t offset = shortcutRecordOffset(record);
        const auto posted = results[record] == telling ? postedStroke(entry, offset) : std::nullopt;
        if (posted)
            stroke.text.appendShortcut(posted->flags, entry[offset + ShortcutRecord::Text].text());
    }
    return stroke;
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
