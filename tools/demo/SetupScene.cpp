#include "tools/demo/SetupScene.h"

#include "tools/stage/SetupWindowOnScreen.h"

#include <stdexcept>

namespace kestrel {

std::vector<Observation> playSetupScene(
    const stage::Studio& studio, stage::ChildProcess& kestrel, const std::filesystem::path& picture)
{
    std::vector<Observation> observed;
    try {
        const stage::SetupWindowOnScreen setup(studio);
        // A second start brings the window up, also where there is no tray.
        const auto second = studio.start("kestrel");
        observed.push_back({ "a second start hands over to the first",
            second->wait(stage::milliseconds(10000)) == 0 });
        setup.person.waitUntilShown(setup.Title);
        observed.push_back({ "the setup window comes up", true });
        setup.select(3);
        setup.person.press("super+alt+k");
        setup.assign();
        setup.rename(3, "Consolidate");
        observed.push_back({ "picture " + picture.string(), studio.photograph(picture) });
        setup.ok();
        observed.push_back({ "OK closes the setup window", true });
    } catch (const std::runtime_error& error) {
        observed.push_back({ error.what(), false });
    }
    observed.push_back(
        { "the utility goes on running", !kestrel.wait(stage::milliseconds(0)).has_value() });
    return observed;
}

} // namespace kestrel
