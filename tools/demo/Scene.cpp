#include "tools/demo/Scene.h"

#include "tools/stage/KeysDown.h"

#include <csignal>
#include <iostream>

namespace kestrel {

namespace {
using stage::milliseconds;

// The link is looked after every five seconds; the first look only arms the clock.
constexpr milliseconds LinkTimeout { 20000 };
constexpr milliseconds StartTimeout { 15000 };
// Longer than a press takes on a busy machine by far, and still no wait for a person.
constexpr milliseconds Quiet { 400 };

bool isKey(std::string_view line)
{
    return line.starts_with("down ") || line.starts_with("up ");
}

// Without what differs from run to run and what goes without saying:
// "down S Command repeat=no t=123" is "down S Command", "up S none repeat=no t=124" is "up S".
std::string brief(std::string line)
{
    for (const char* end : { " t=", " repeat=no", " none" })
        line = line.substr(0, line.find(end));
    return line;
}
} // namespace

Scene::Scene(std::filesystem::path programs, std::filesystem::path pictures,
    const stage::Studio::Options& options)
    : m_pictures(std::move(pictures))
    , m_studio(std::move(programs), options)
{
    std::filesystem::create_directories(m_pictures);
}

int Scene::play(Ending ending)
{
    openStudio();
    goOnline();
    pressAndRelease();
    pressFourShortcuts();
    pressBehindAnotherWindow();
    if (ending == Ending::WhenTheWorkstationIsClosed)
        waitForUser();
    quit();
    return m_missing;
}

void Scene::openStudio()
{
    std::cout << "key 6 gets ⌘S, key 2 gets ⌘C, ⌥F5, A and ⇪⌘Z\n";
    m_studio.assign({ "6", "Command+S", "--title", "Save" });
    m_studio.assign({ "2", "Command+C", "Option+F5", "A", "Shift+Command+Z" });
    m_workstation = m_studio.start("Pro Tools");
    check("the workstation is in front",
        m_workstation->waitForLineWith("ready", StartTimeout).has_value());
    m_console = m_studio.start("zenta-console");
    m_kestrel = m_studio.start("kestrel");
}

void Scene::goOnline()
{
    std::cout << "waiting for the link …\n";
    check("the console's heartbeat is answered: the link is online",
        m_console->waitForLineWith("answer 90 00 7F", LinkTimeout).has_value());
    photograph("online");
}

void Scene::pressAndRelease()
{
    check("press 6 arrives as ⌘S down",
        keysAfter("press 6") == "down Super_L; down S Command; up Super_L Command");
    check("release 6 arrives as S up", keysAfter("release 6") == "up S");
}

void Scene::pressFourShortcuts()
{
    check("press 2 arrives as four keys down, in order",
        keysAfter("press 2")
            == "down Super_L; down C Command; up Super_L Command; "
               "down Alt_L; down F5 Option; up Alt_L Option; "
               "down A; "
               "down Shift_L; down Super_L Shift; down Z Shift+Command; "
               "up Shift_L Shift+Command; up Super_L Command");
    check("release 2 arrives as four keys up, in the same order",
        keysAfter("release 2") == "up C; up F5; up A; up Z");
    photograph("workstation");
}

void Scene::pressBehindAnotherWindow()
{
    const auto other = m_studio.start("Pro Tools", { "--class", "Notepad", "--title", "Notepad" });
    check("another window comes to the front",
        other->waitForLineWith("ready", StartTimeout).has_value());
    static_cast<void>(m_workstation->linesUntilQuiet(Quiet));
    check("press 6 reaches nobody now", keysAfter("press 6").empty());
    check("release 6 reaches nobody now", keysAfter("release 6").empty());
    bool silent = true;
    for (const auto& line : other->linesUntilQuiet(Quiet))
        silent = silent && !isKey(line);
    check("nor does the other window receive a key", silent);
}

void Scene::quit()
{
    m_kestrel->signal(SIGTERM);
    check("the utility ends in an orderly way", m_kestrel->wait(milliseconds(10000)) == 0);
    check("no key is left down", stage::keysDown(m_studio.displayName()).empty());
    m_console->writeLine("quit");
    check("the console ends", m_console->wait(milliseconds(10000)) == 0);
}

void Scene::waitForUser()
{
    std::cout << "close the workstation's window to end the demonstration\n";
    while (!m_workstation->wait(milliseconds(0))) {
        // Unread output would in the end make them stand still.
        static_cast<void>(m_workstation->linesUntilQuiet(Quiet));
        static_cast<void>(m_console->linesUntilQuiet(milliseconds(0)));
    }
}

std::string Scene::keysAfter(const std::string& consoleCommand)
{
    m_console->writeLine(consoleCommand);
    std::string keys;
    for (const auto& line : m_workstation->linesUntilQuiet(Quiet)) {
        if (isKey(line))
            keys += (keys.empty() ? "" : "; ") + brief(line);
    }
    std::cout << "  " << consoleCommand << "  →  " << (keys.empty() ? "nothing" : keys) << '\n';
    return keys;
}

void Scene::check(const std::string& what, bool observed)
{
    std::cout << (observed ? "  seen    " : "  MISSING ") << what << std::endl;
    m_missing += observed ? 0 : 1;
}

void Scene::photograph(const std::string& name)
{
    const auto picture = m_pictures / (name + ".png");
    check("picture " + picture.string(), m_studio.photograph(picture));
}

} // namespace kestrel
