#include "platform/SystemFacts.h"

#include "platform/IdleLoop.h"
#include "platform/Workstation.h"
#include "platform/macos/CoreMIDIServices.h"
#include "platform/macos/SysctlProcessTable.h"

#import <AppKit/AppKit.h>

namespace kestrel {

namespace {
NSString* const Driver = @"/Library/Audio/MIDI Drivers/HolvikZentaMIDI.plugin";

SystemFacts::Display displayFacts()
{
    SystemFacts::Display facts;
    facts.session = SystemFacts::Session::MacOS;
    facts.answers = true;
    const char* const front
        = NSWorkspace.sharedWorkspace.frontmostApplication.localizedName.UTF8String;
    if (front)
        facts.front = front;
    return facts;
}

SystemFacts::MIDIService midiFacts()
{
    SystemFacts::MIDIService facts;
    facts.library = SystemFacts::Library::CoreMIDI;
    facts.hasDriver = [NSFileManager.defaultManager fileExistsAtPath:Driver];
    IdleLoop loop;
    CoreMIDIServices services(loop);
    const auto ignore = [](const MIDINotification&, void*) {};
    const auto client = services.createClient("kestrelctl", ignore, nullptr);
    if (!client)
        return facts;
    facts.state = SystemFacts::MIDI::Answers;
    facts.devices = services.devices();
    services.disposeClient(*client);
    return facts;
}
} // namespace

SystemFacts gatherSystemFacts(long)
{
    @autoreleasepool {
        SystemFacts facts;
        facts.display = displayFacts();
        facts.workstationRuns = SysctlProcessTable().isRunning(Workstation::Name);
        facts.midi = midiFacts();
        return facts;
    }
}

} // namespace kestrel
