#pragma once

#include "platform/DefaultsStore.h"
#include "platform/FileAttributes.h"
#include "platform/KeyEvents.h"
#include "platform/KeyTranslation.h"
#include "platform/LoginItem.h"
#include "platform/MIDIServices.h"
#include "platform/MainLoop.h"
#include "platform/Notices.h"
#include "platform/Permissions.h"
#include "platform/ProcessTable.h"
#include "platform/WindowTraits.h"
#include "platform/Workspace.h"

#include <memory>
#include <optional>
#include <string>

namespace kestrel {

// Everything that differs between operating systems, one object a seam.
struct Platform {
    std::unique_ptr<MIDIServices> midiServices;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<KeyEvents> keyEvents;
    std::unique_ptr<KeyTranslation> keyTranslation;
    std::unique_ptr<ProcessTable> processTable;
    std::unique_ptr<FileAttributes> fileAttributes;
    std::unique_ptr<WindowTraits> windowTraits;
    std::unique_ptr<Permissions> permissions;
    std::unique_ptr<Notices> notices;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<DefaultsStore> defaults;
};

// Defined once by each platform folder. `mainLoop` outlives the platform.
[[nodiscard]] Platform makePlatform(MainLoop& mainLoop);

// Before there is an application object: makes the toolkit use this platform's kind of session.
// Why no window can be shown in it, in words for the user; nothing when all is well.
[[nodiscard]] std::optional<std::string> prepareSession();

} // namespace kestrel
