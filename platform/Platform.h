#pragma once

#include "platform/DefaultsStore.h"
#include "platform/DocumentFiles.h"
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

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kestrel {

// One object for each interface behind which operating systems differ.
struct Platform {
    std::unique_ptr<MIDIServices> midiServices;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<KeyEvents> keyEvents;
    std::unique_ptr<KeyTranslation> keyTranslation;
    std::unique_ptr<ProcessTable> processTable;
    std::unique_ptr<DocumentFiles> documentFiles;
    std::unique_ptr<WindowTraits> windowTraits;
    std::unique_ptr<Permissions> permissions;
    std::unique_ptr<Notices> notices;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<DefaultsStore> defaults;
    std::string recoveryFile; // UTF-8 path for a copy of the live set; empty for none
};

// Each platform folder defines it once. `mainLoop` outlives the platform.
[[nodiscard]] Platform makePlatform(MainLoop& mainLoop);

// Called before the application object exists: prepares the environment that Qt reads. Returns a
// sentence for the user if this session can show no window.
[[nodiscard]] std::optional<std::string> prepareSession();

// Calls `then` once, on the main thread, when the files that this program was started with have
// arrived as events: at once on a system that passes them as arguments. Needs the application
// object.
void afterFilesOfLaunch(const std::function<void()>& then);

// The signals that end a program on this system by default, except those that report a fault of the
// program and those that it cannot handle.
[[nodiscard]] std::vector<int> endingSignals();

} // namespace kestrel
