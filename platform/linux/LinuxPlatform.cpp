#include "platform/Platform.h"
#include "platform/linux/defaults/FileDefaultsStore.h"
#include "platform/linux/midi/JackMIDIServices.h"
#include "platform/linux/system/LinuxPermissions.h"
#include "platform/linux/system/ProcProcessTable.h"
#include "platform/linux/system/XattrFileAttributes.h"
#include "platform/linux/x11/X11Adapters.h"

namespace kestrel {

Platform makePlatform(MainLoop& mainLoop)
{
    X11Adapters x11 = makeX11Adapters(mainLoop);
    return {
        .midiServices = std::make_unique<JackMIDIServices>(mainLoop),
        .workspace = std::move(x11.workspace),
        .keyEvents = std::move(x11.keyEvents),
        .processTable = std::make_unique<ProcProcessTable>(),
        .fileAttributes = std::make_unique<XattrFileAttributes>(),
        .windowTraits = std::move(x11.windowTraits),
        .permissions = std::make_unique<LinuxPermissions>(),
        .defaults = makeFileDefaultsStore(),
    };
}

} // namespace kestrel
