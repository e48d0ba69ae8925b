#include "tools/selftest/Check.h"
#include "tools/selftest/Scene.h"
#include "tools/stage/Patience.h"

namespace kestrel::selftest {

namespace {
constexpr stage::milliseconds LetGoTimeout { 2000 };

void answersTheHeartbeat(Scene& scene)
{
    scene.goOnline();
    expect(scene.isAnswered(), "the heartbeat was not answered");
    scene.seeOnline(true);
    scene.photograph("online");
}

void letsAllKeysGo(Scene& scene)
{
    expect(stage::comesTrue([&] { return scene.studio.areAllKeysUp(); }, LetGoTimeout),
        "a key or modifier is still down");
}

void goOnlineInFront(Scene& scene)
{
    scene.goOnline();
    scene.studio.bringWorkstationToFront();
    static_cast<void>(scene.workstation->linesUntilQuiet(Scene::Quiet));
}

void typesOneKey(Scene& scene)
{
    goOnlineInFront(scene);
    expectSame("press 6", scene.keysAfter("press 6"), "down S Command");
    expectSame("release 6", scene.keysAfter("release 6"), "up S");
    letsAllKeysGo(scene);
}

void typesFourKeys(Scene& scene)
{
    goOnlineInFront(scene);
    expectSame("press 2", scene.keysAfter("press 2"),
        "down C Command; down F5 Option; down A; down Z Shift+Command");
    expectSame("release 2", scene.keysAfter("release 2"), "up C; up F5; up A; up Z");
    letsAllKeysGo(scene);
    scene.photograph("workstation");
}

void typesUnderSecureInput(Scene& scene)
{
    goOnlineInFront(scene);
    scene.workstation->writeLine("secure on");
    expect(scene.workstation->waitForLineWith("secure on", Scene::StartTimeout).has_value(),
        "secure input cannot be switched on");
    const std::string pressed = scene.keysAfter("press 6");
    const std::string released = scene.keysAfter("release 6");
    scene.workstation->writeLine("secure off");
    expectSame("press 6", pressed, "down S Command");
    expectSame("release 6", released, "up S");
    letsAllKeysGo(scene);
}

void typesIntoNoOther(Scene& scene)
{
    goOnlineInFront(scene);
    scene.studio.bringAnotherToFront();
    expectSame("press 6", scene.keysAfter("press 6"), "");
    expectSame("release 6", scene.keysAfter("release 6"), "");
    scene.studio.bringWorkstationToFront();
    letsAllKeysGo(scene);
}
} // namespace

Checks keyChecks()
{
    const std::vector<Need> posting { Need::PostedEvents };
    return {
        { "the heartbeat is answered, and the status item is online", {}, answersTheHeartbeat },
        { "a press and a release arrive with exact key and modifier, which is let go", posting,
            typesOneKey },
        { "four shortcuts arrive in order and are released in order", posting, typesFourKeys },
        { "the same arrives under secure input", { Need::PostedEvents, Need::SecureInput },
            typesUnderSecureInput },
        { "nothing is typed while another application is in front", posting, typesIntoNoOther },
    };
}

} // namespace kestrel::selftest
