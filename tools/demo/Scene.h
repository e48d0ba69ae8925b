#pragma once

#include "tools/stage/Studio.h"

#include <filesystem>
#include <memory>
#include <string>

namespace kestrel {

// The scene that the demonstration plays: what is done goes to standard output with what came of
// it, and everything that did not happen is counted.
class Scene {
public:
    Scene(std::filesystem::path programs, std::filesystem::path pictures,
        const stage::Studio::Options& options);

    enum class Ending { AtOnce, WhenTheWorkstationIsClosed };

    // The number of things that were not observed.
    [[nodiscard]] int play(Ending ending);

private:
    void openStudio();
    void goOnline();
    void pressAndRelease();
    void pressFourShortcuts();
    void pressBehindAnotherWindow();
    void waitForUser();
    void quit();

    void check(const std::string& what, bool observed);
    // Sends the command to the console, and prints what the workstation received by then.
    [[nodiscard]] std::string keysAfter(const std::string& consoleCommand);
    void photograph(const std::string& name);

    std::filesystem::path m_pictures;
    stage::Studio m_studio;
    std::unique_ptr<stage::ChildProcess> m_workstation;
    std::unique_ptr<stage::ChildProcess> m_console;
    std::unique_ptr<stage::ChildProcess> m_kestrel;
    int m_missing = 0;
};

} // namespace kestrel
