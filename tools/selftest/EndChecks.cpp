#include "tools/selftest/Check.h"
#include "tools/selftest/Scene.h"

#include <csignal>
#include <filesystem>

namespace kestrel::selftest {

namespace {
constexpr stage::milliseconds EndTimeout { 2000 };

struct Way {
    const char* name;
    Need need;
    std::function<void(Scene&)> act;
};

Way bySignal(const char* name, int number)
{
    return { name, Need::Nothing, [number](Scene& scene) { scene.utility->signal(number); } };
}

std::vector<Way> ways()
{
    return {
        { "Quit in the menu", Need::Nothing,
            [](Scene& scene) {
                expectSame("Quit", scene.ask("choose Quit ZENTA Kestrel"), "done");
            } },
        { "a request of the system", Need::QuitEvents,
            [](Scene& scene) { scene.studio.askToQuit(*scene.utility); } },
        bySignal("SIGTERM", SIGTERM),
        bySignal("SIGINT", SIGINT),
        bySignal("SIGHUP", SIGHUP),
    };
}

void openAlert(Scene& scene)
{
    expectSame("About", scene.ask("choose About ZENTA Kestrel"), "done");
    scene.askUntil("dialogs", "no alert opened",
        [](const std::string& answer) { return !factOf(answer, "open").empty(); });
}

// The next start shows what the end has stored. The recovery file, from which a start after a kill
// restores the set, must be gone.
void expectStored(Scene& scene, const std::string& name)
{
    expect(!std::filesystem::exists(scene.folder / "utility" / "recovery.ZKCF"),
        "the recovery file is still there");
    scene.utility = scene.studio.startUtility(scene.folder / "utility", {});
    scene.askUntil("title 1", "the assignments were not stored",
        [&](const std::string& answer) { return factOf(answer, "text") == name; });
}

void end(Scene& scene, const Way& way, bool withAlert)
{
    static int count = 0;
    const std::string name = "End " + std::to_string(++count);
    scene.startUtility(name);
    scene.askUntil("title 1", "the set was not opened",
        [&](const std::string& answer) { return factOf(answer, "text") == name; });
    if (withAlert)
        openAlert(scene);
    const auto begin = std::chrono::steady_clock::now();
    way.act(scene);
    const auto code = scene.utility->wait(Scene::StartTimeout);
    const auto took
        = std::chrono::duration_cast<stage::milliseconds>(std::chrono::steady_clock::now() - begin);
    expect(code == 0, "the exit code is " + (code ? std::to_string(*code) : "missing"));
    expect(took <= EndTimeout, "the end took " + std::to_string(took.count()) + " ms");
    expectStored(scene, name);
}
} // namespace

Checks endChecks()
{
    Checks checks;
    for (const Way& way : ways()) {
        for (const bool withAlert : { false, true })
            checks.push_back({ std::string(way.name) + " ends it within two seconds and stores the"
                    + " assignments" + (withAlert ? ", with an alert open" : ""),
                { way.need }, [way, withAlert](Scene& scene) { end(scene, way, withAlert); } });
    }
    return checks;
}

} // namespace kestrel::selftest
