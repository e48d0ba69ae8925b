#include "tools/demo/ActivityAct.h"

#include "tools/stage/Person.h"

#include <csignal>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace kestrel {

namespace {
const std::string Title = "Activity";
constexpr char Mnemonic = 'v';

std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream file(path);
    return { std::istreambuf_iterator<char>(file), {} };
}
} // namespace

void ActivityAct::explainAndPlayBack()
{
    const auto recording = std::filesystem::absolute(m_performance.pictures()) / "recording.txt";
    try {
        explain();
        save(recording);
        playBack(recording);
    } catch (const std::runtime_error& error) {
        m_performance.check(error.what(), false);
    }
}

void ActivityAct::explain()
{
    std::cout << "choosing \"Activity…\" from the menu in the tray\n";
    const stage::Person person(m_performance.studio);
    person.chooseFromTray(Mnemonic);
    person.waitUntilShown(Title);
    {
        const auto other = m_performance.studio.start(
            "Pro Tools", { "--class", "Notepad", "--title", "Notepad" });
        m_performance.check("another window comes to the front",
            other->waitForLineWith("ready", Performance::StartTimeout).has_value());
        static_cast<void>(m_performance.workstation->linesUntilQuiet(Performance::Quiet));
        m_performance.check(
            "press 6 reaches nobody now", m_performance.keysAfter("press 6").empty());
        static_cast<void>(m_performance.keysAfter("release 6"));
        m_performance.photograph("activity");
    }
}

void ActivityAct::save(const std::filesystem::path& recording)
{
    const stage::Person person(m_performance.studio);
    std::filesystem::remove(recording);
    person.bringToFront(Title);
    person.press("ctrl+s");
    person.waitUntilShown("Save Activity");
    person.press("ctrl+a");
    person.type(recording.string());
    person.press("Return");
    person.waitUntilGone("Save Activity");
    const std::string script = contentOf(recording);
    m_performance.check("the recording says why: Notepad was in front",
        script.find("Key 6 pressed → nothing: Notepad is in front, not Pro Tools")
            != std::string::npos);
    person.press("Escape");
    person.waitUntilGone(Title);
    person.bringToFront("Pro Tools");
}

// The recording holds the keys of the whole demonstration. All of them are typed this time.
void ActivityAct::playBack(const std::filesystem::path& recording)
{
    std::cout << "the console plays the recording back, ten times as fast\n";
    m_performance.console->signal(SIGTERM);
    m_performance.check(
        "the console ends", m_performance.console->wait(Performance::StartTimeout).has_value());
    static_cast<void>(m_performance.workstation->linesUntilQuiet(Performance::Quiet));
    const auto console
        = m_performance.studio.start("zenta-console", { "--speed", "10", recording.string() });
    m_performance.check("⌘S is typed again",
        m_performance.workstation->waitForLineWith("down S Command", Performance::LinkTimeout)
            .has_value());
    m_performance.check("⌥F5 is typed again",
        m_performance.workstation->waitForLineWith("down F5 Option", Performance::LinkTimeout)
            .has_value());
    console->signal(SIGTERM);
    static_cast<void>(console->wait(Performance::StartTimeout));
    static_cast<void>(m_performance.workstation->linesUntilQuiet(Performance::Quiet));
    m_performance.console = m_performance.studio.start("zenta-console");
}

} // namespace kestrel
