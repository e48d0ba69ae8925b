#include "tools/selftest/Check.h"
#include "tools/selftest/Scene.h"

namespace kestrel::selftest {

namespace {
namespace Places = stage::SetupPlaces;

constexpr KeyCode Escape = 53;

struct Chord {
    const char* name; // as people write it
    KeyCode key;
    ModifierFlags modifiers;
    const char* shown; // in the field
};

constexpr Chord Chords[] = {
    { "⌘Q", 12, Modifier::Command, "⌘+Q" },
    { "⌘H", 4, Modifier::Command, "⌘+H" },
    { "F5", 96, 0, "F5" },
    { "Escape", Escape, 0, "ESC" },
    { "⌃Tab", 48, Modifier::Control, "^+TAB" },
};

void openSetup(Scene& scene)
{
    if (factOf(scene.ask(std::string("window ") + Places::Title), "visible") != "yes")
        scene.openSetup();
}

void capture(Scene& scene, const Chord& chord)
{
    openSetup(scene);
    scene.clickInSetup(Places::button(9)); // a key without shortcuts
    scene.clickInSetup(Places::field(1));
    scene.askUntil("focus", "the field did not get the focus",
        [](const std::string& answer) { return factOf(answer, "field") == "1"; });
    scene.studio.type(chord.key, chord.modifiers);
    scene.askUntil("field 1", std::string("the field does not show ") + chord.shown,
        [&](const std::string& answer) { return factOf(answer, "text") == chord.shown; });
}

void opensTheSaveSheet(Scene& scene)
{
    openSetup(scene);
    scene.clickInSetup(Places::Save);
    scene.askUntil("dialogs", "the sheet did not open", [](const std::string& answer) {
        return factOf(answer, "open") == std::string(Places::SaveTitle) + " on " + Places::Title;
    });
    scene.photograph("sheet");
    scene.studio.type(Escape, 0);
    scene.askUntil("dialogs", "Escape does not close the sheet",
        [](const std::string& answer) { return factOf(answer, "open").empty(); });
}

void closesOnCancel(Scene& scene)
{
    openSetup(scene);
    scene.photograph("setup");
    scene.clickInSetup(Places::Cancel);
    scene.askUntil(std::string("window ") + Places::Title, "the setup window stays",
        [](const std::string& answer) { return factOf(answer, "visible") == "no"; });
    scene.studio.bringWorkstationToFront();
}
} // namespace

Checks setupChecks()
{
    const std::vector<Need> posting { Need::PostedEvents };
    Checks checks { { "the setup window opens in front and gets the focus", {}, openSetup } };
    for (const Chord& chord : Chords)
        checks.push_back({ std::string("a field captures ") + chord.name, posting,
            [&chord](Scene& scene) { capture(scene, chord); } });
    checks.push_back({ "Save opens a sheet, which Escape closes", posting, opensTheSaveSheet });
    checks.push_back({ "Cancel closes the setup window", posting, closesOnCancel });
    return checks;
}

} // namespace kestrel::selftest
