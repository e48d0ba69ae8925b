#include "tools/selftest/Check.h"
#include "tools/selftest/Scene.h"

namespace kestrel::selftest {

namespace {
constexpr stage::milliseconds Settling { 2000 }; // programs that take the front do so within this

void leavesTheFrontAlone(Scene& scene)
{
    scene.startWorkstation();
    scene.startConsole();
    static_cast<void>(scene.workstation->linesUntilQuiet(Scene::Quiet));
    scene.startUtility("Solo");
    const auto line = scene.workstation->waitForLineWith("focus out", Settling);
    expect(!line, "the workstation lost the focus");
    expectSame("the front application", scene.studio.frontApplication(), "Pro Tools");
}

void showsTheStatusItem(Scene& scene)
{
    StatusFacts facts;
    scene.askUntil("status", "there is no status item", [&](const std::string& answer) {
        facts = scene.studio.status(answer);
        return facts.isShown;
    });
    expect(facts.fits, "its picture does not fit: " + facts.details);
    scene.photograph("status-item");
}

void offersItsMenu(Scene& scene)
{
    std::string menu = factOf(scene.ask("status"), "menu");
    // Only some systems have the item.
    if (const auto at = menu.find("Launch at Login|"); at != std::string::npos)
        menu.erase(at, std::string("Launch at Login|").size());
    const std::string expected
        = "Plug-in Panel|User Assignable Setup…|Save Key Sheet…|"
          "Activity…|Console Preferences…|About ZENTA Kestrel|Quit ZENTA Kestrel";
    // Notices about the session come before these.
    expect(menu.ends_with(expected), "the menu is " + menu);
}

void opensItsMenuOnAClick(Scene& scene)
{
    const std::string status = scene.ask("status");
    expect(factOf(status, "menu").starts_with("Plug-in Panel|"),
        "a notice comes before the panel's item: " + status);
    scene.studio.chooseFirstMenuEntry(status);
    scene.askUntil("window Plug-in Panel", "the panel did not appear",
        [](const std::string& answer) { return factOf(answer, "visible") == "yes"; });
}
} // namespace

Checks launchChecks()
{
    return {
        { "the launch leaves the front application alone", {}, leavesTheFrontAlone },
        { "the status item appears, with a picture that fits", {}, showsTheStatusItem },
        { "the menu has its items in order", {}, offersItsMenu },
        { "a click opens the menu, and its first item shows the panel", { Need::PostedEvents },
            opensItsMenuOnAClick },
    };
}

} // namespace kestrel::selftest
