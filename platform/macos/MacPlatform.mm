#include "platform/Platform.h"
#include "platform/StoredDefaults.h"
#include "platform/macos/AccessibilityPermissions.h"
#include "platform/macos/AppKitWindowTraits.h"
#include "platform/macos/AppKitWorkspace.h"
#include "platform/macos/AppServiceLoginItem.h"
#include "platform/macos/ApplicationMenu.h"
#include "platform/macos/CoreMIDIServices.h"
#include "platform/macos/EditMenu.h"
#include "platform/macos/FoundationDocumentFiles.h"
#include "platform/macos/QuartzKeyEvents.h"
#include "platform/macos/QuartzKeyTranslation.h"
#include "platform/macos/SheetTitles.h"
#include "platform/macos/StatusItemGuard.h"
#include "platform/macos/SysctlProcessTable.h"

#include <csignal>
#include <cstdlib>
#include <utility>

namespace kestrel {

Platform makePlatform(MainLoop& mainLoop)
{
    guardStatusItem();
    dropApplicationMenuShortcuts();
    showTitlesOfSheets();
    offerEditMenuToFilePanels();
    StoredDefaults defaults = openStoredDefaults();
    auto access = std::make_shared<PostEventAccess>(mainLoop);
    return {
        .midiServices = std::make_unique<CoreMIDIServices>(mainLoop),
        .workspace = std::make_unique<AppKitWorkspace>(),
        .keyEvents = std::make_unique<QuartzKeyEvents>(access),
        .keyTranslation = std::make_unique<QuartzKeyTranslation>(),
        .processTable = std::make_unique<SysctlProcessTable>(),
        .documentFiles = std::make_unique<FoundationDocumentFiles>(),
        .windowTraits = std::make_unique<AppKitWindowTraits>(),
        .permissions = std::make_unique<AccessibilityPermissions>(access),
        .notices = std::make_unique<NoNotices>(),
        .loginItem = std::make_unique<AppServiceLoginItem>(),
        .defaults = std::move(defaults.store),
        .recoveryFile = std::move(defaults.recoveryFile),
    };
}

std::optional<std::string> prepareSession()
{
    // Without this Qt activates the program whenever it raises a window, also the panel, and keys
    // no longer go to the workstation. The program calls Workspace::activateApplication() instead.
    ::setenv("QT_MAC_SET_RAISE_PROCESS", "0", 0);
    // Without this Qt activates the program at its launch too, when the workstation may be in
    // front.
    ::setenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1", 0);
    return {};
}

std::vector<int> endingSignals()
{
    return { SIGHUP, SIGINT, SIGQUIT, SIGALRM, SIGTERM, SIGXCPU, SIGVTALRM, SIGPROF, SIGUSR1,
        SIGUSR2 };
}

} // namespace kestrel
