#include "tools/selftest/Check.h"
#include "tools/selftest/PanelPicture.h"
#include "tools/selftest/Scene.h"
#include "tools/stage/Patience.h"

#include <cstdio>

namespace kestrel::selftest {

namespace {
constexpr const char* Panel = "window Plug-in Panel";
constexpr stage::milliseconds PanelSettling { 1000 };

void hasItsProperties(Scene& scene)
{
    scene.showPanel();
    const std::string panel = scene.ask(Panel);
    const std::string fault = scene.studio.faultOfPanel(panel);
    expect(fault.empty(), fault + "\n" + panel);
}

void staysAbove(Scene& scene, const std::string& when)
{
    const bool holds = stage::comesTrue(
        [&] { return scene.studio.floats(*scene.utility, "Plug-in Panel", scene.ask(Panel)); },
        Scene::StartTimeout);
    expect(holds, "the panel is not above the other windows " + when + ": " + scene.ask(Panel));
}

void floatsOverOthers(Scene& scene)
{
    scene.showPanel();
    staysAbove(scene, "while the workstation is in front");
    scene.studio.bringAnotherToFront();
    staysAbove(scene, "while another application is in front");
    scene.studio.bringWorkstationToFront();
    staysAbove(scene, "when the workstation is in front again");
    scene.photograph("panel-over-workstation");
}

void staysWhenHidden(Scene& scene)
{
    scene.showPanel();
    static_cast<void>(scene.ask("hide"));
    staysAbove(scene, "while the application is hidden");
    static_cast<void>(scene.ask("unhide"));
    staysAbove(scene, "when the application is shown again");
    scene.studio.bringWorkstationToFront();
}

void leavesTheFocusWhenClicked(Scene& scene)
{
    scene.showPanel();
    scene.studio.bringWorkstationToFront();
    static_cast<void>(scene.workstation->linesUntilQuiet(Scene::Quiet));
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const std::string area = factOf(scene.ask(Panel), "area");
    expect(std::sscanf(area.c_str(), "%d,%d,%d,%d", &x, &y, &width, &height) == 4,
        "the panel has no area");
    for (const int part : { 1, 2, 3 })
        scene.studio.click(x + width * part / 4, y + height * part / 4);
    expect(!scene.workstation->waitForLineWith("focus out", PanelSettling),
        "the workstation lost the focus");
    expectSame("the front application", scene.studio.frontApplication(), "Pro Tools");
}

void mirrorsTheConsole(Scene& scene)
{
    scene.goOnline();
    scene.showPanel();
    scene.console->writeLine("show");
    expect(
        scene.console
            ->waitForLine([](std::string_view line) { return line == "shown"; }, Scene::LinkTimeout)
            .has_value(),
        "the simulated console did not end its scene");
    std::string fault;
    const bool matches = stage::comesTrue(
        [&] {
            const auto picture = scene.folder / "panel-drawn.png";
            expectSame("the probe's picture", scene.ask("panel " + picture.string()), "done");
            fault = differenceFromApproved(picture, scene.approved, "equaliser");
            return fault.empty();
        },
        Scene::StartTimeout);
    expect(matches, fault);
    scene.photograph("panel");
}
} // namespace

Checks panelChecks()
{
    return {
        { "the panel's window has the class, style and level of a floating panel", {},
            hasItsProperties },
        { "the panel stays above whatever application is in front", {}, floatsOverOthers },
        { "the panel stays when the application hides, and when it comes back",
            { Need::HiddenApplications }, staysWhenHidden },
        { "clicks on the panel leave the workstation in front", { Need::PostedEvents },
            leavesTheFocusWhenClicked },
        { "the panel mirrors display, knobs and lamps", {}, mirrorsTheConsole },
    };
}

} // namespace kestrel::selftest
