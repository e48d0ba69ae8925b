#include "tools/selftest/Check.h"
#include "tools/selftest/Scene.h"

namespace kestrel::selftest {

namespace {
void followsAConsoleThatGoesAndComes(Scene& scene)
{
    scene.goOnline();
    scene.console.reset();
    scene.seeOnline(false);
    scene.startConsole();
    expect(scene.isAnswered(), "the console that came back was not answered");
    scene.seeOnline(true);
}

void survivesTheMIDIServer(Scene& scene)
{
    scene.goOnline();
    scene.studio.killMIDIServer();
    scene.console.reset();
    scene.seeOnline(false);
    scene.studio.startMIDIServer();
    scene.startConsole();
    expect(scene.isAnswered(), "the console was not answered after the MIDI server had ended");
    scene.seeOnline(true);
}

void seesTheWorkstationEnd(Scene& scene)
{
    scene.goOnline();
    scene.console->writeLine("heartbeat off");
    scene.workstation.reset();
    scene.seeOnline(false);
    scene.console->writeLine("heartbeat on");
    scene.startWorkstation();
    expect(scene.isAnswered(), "the console was not answered with the new workstation");
}
} // namespace

Checks linkChecks()
{
    return {
        { "a console that goes and comes back is online again", {},
            followsAConsoleThatGoesAndComes },
        { "a workstation that ends takes the console offline", {}, seesTheWorkstationEnd },
        { "the link outlives a MIDI server that is killed", { Need::MIDIServerControl },
            survivesTheMIDIServer },
    };
}

} // namespace kestrel::selftest
