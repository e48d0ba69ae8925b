#include "tools/selftest/Scene.h"

#include "assign/UserAssignFile.h"
#include "sets/ShortcutParser.h"
#include "tools/stage/KeyLines.h"
#include "tools/stage/Patience.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <set>
#include <utility>

namespace kestrel::selftest {

namespace {
constexpr stage::milliseconds ProbeTimeout { 5000 };

void assign(UserAssignFile& set, int button, const std::vector<const char*>& shortcuts)
{
    ArchiveArray& entry = *set.getSwitchShortcut(button);
    for (std::size_t record = 0; record < shortcuts.size(); ++record)
        TypedShortcut::parse(QString::fromUtf8(shortcuts[record])).value().writeTo(entry, record);
}

// How the systems call the keys that are modifiers.
bool isModifierKey(const std::string& line)
{
    static const std::set<std::string> names { "Shift", "Control", "Option", "Command", "Shift_L",
        "Control_L", "Alt_L", "Super_L", "Meta_L" };
    const auto start = line.find(' ') + 1;
    return names.contains(line.substr(start, line.find(' ', start) - start));
}

std::array<int, 4> areaOf(const std::string& answer)
{
    std::array<int, 4> area {};
    const std::string text = factOf(answer, "area");
    if (std::sscanf(text.c_str(), "%d,%d,%d,%d", &area[0], &area[1], &area[2], &area[3]) != 4)
        throw Failure("the probe tells no area: " + answer);
    return area;
}
} // namespace

void expect(bool holds, const std::string& what)
{
    if (!holds)
        throw Failure(what);
}

void expectSame(const std::string& what, const std::string& value, const std::string& expected)
{
    expect(value == expected, what + "\nis       " + value + "\nand not  " + expected);
}

std::string factOf(const std::string& answer, const std::string& name)
{
    const auto start = (" " + answer).find(" " + name + "=");
    if (start == std::string::npos)
        return {};
    std::string rest = answer.substr(start + name.size() + 1);
    if (name == "text" || name == "open")
        return rest;
    return rest.substr(0, rest.find(name == "menu" ? ';' : ' '));
}

Scene::Scene(Studio& theStudio, std::filesystem::path theFolder, std::filesystem::path pictures)
    : studio(theStudio)
    , folder(std::move(theFolder))
    , approved(std::move(pictures))
{
}

void Scene::startWorkstation()
{
    workstation = studio.startWorkstation();
    studio.bringWorkstationToFront();
    expect(workstation->waitForLineWith("ready", StartTimeout).has_value(),
        "the workstation did not come to the front");
}

void Scene::startConsole()
{
    console = studio.startConsole();
    expect(console->waitForLineWith("ready", StartTimeout).has_value(),
        "the simulated console did not start");
}

void Scene::startUtility(const std::string& name)
{
    utility.reset();
    utility = studio.startUtility(folder / "utility", { writeSet(name).string() });
    utility->writeLine("ready");
    expect(utility->waitForLineWith("probe ready", StartTimeout).has_value(),
        "the utility did not start");
}

void Scene::goOnline()
{
    const auto runs
        = [](const Studio::Process& process) { return process && !process->wait(milliseconds(0)); };
    if (!runs(workstation))
        startWorkstation();
    if (!runs(console))
        startConsole();
    if (!runs(utility))
        startUtility("Solo");
    expect(isAnswered(), "the heartbeat of the console was not answered");
}

std::string Scene::ask(const std::string& question)
{
    expect(utility && !utility->wait(milliseconds(0)), "the utility does not run");
    utility->writeLine(question);
    const auto line = utility->waitForLineWith("probe ", ProbeTimeout);
    expect(line.has_value(), "the utility does not answer \"" + question + "\"");
    return line->substr(line->find("probe ") + 6);
}

std::string Scene::askUntil(const std::string& question, const std::string& what,
    const std::function<bool(const std::string&)>& holds)
{
    std::string answer;
    const bool comes
        = stage::comesTrue([&] { return holds(answer = ask(question)); }, StartTimeout);
    expect(comes, what + "; the utility says: " + answer);
    return answer;
}

void Scene::seeOnline(bool isOnline)
{
    askUntil("status",
        std::string("the status item does not show that the console is ")
            + (isOnline ? "online" : "offline"),
        [&](const std::string& answer) {
            const StatusFacts facts = studio.status(answer);
            return facts.isShown && facts.isOnline == isOnline;
        });
}

bool Scene::isAnswered(milliseconds timeout)
{
    static_cast<void>(console->linesUntilQuiet(milliseconds(0)));
    return console->waitForLineWith("answer 90 00 7F", timeout).has_value();
}

std::string Scene::keysAfter(const std::string& command)
{
    static_cast<void>(workstation->linesUntilQuiet(milliseconds(0)));
    console->writeLine(command);
    std::string keys;
    for (const auto& line : workstation->linesUntilQuiet(Quiet)) {
        if (stage::isKeyLine(line) && !isModifierKey(line))
            keys += (keys.empty() ? "" : "; ") + stage::briefKeyLine(line);
    }
    return keys;
}

void Scene::showPanel()
{
    if (factOf(ask("window Plug-in Panel"), "visible") != "yes")
        expectSame("the panel's menu item", ask("choose Plug-in Panel"), "done");
    askUntil("window Plug-in Panel", "the panel did not appear",
        [](const std::string& answer) { return factOf(answer, "visible") == "yes"; });
}

void Scene::openSetup()
{
    expectSame("the setup window's menu item", ask("choose User Assignable Setup…"), "done");
    askUntil(std::string("window ") + stage::SetupPlaces::Title, "the setup window did not open",
        [](const std::string& answer) { return factOf(answer, "active") == "yes"; });
}

// Waits until the window no longer moves: window managers move a window after it was shown.
void Scene::clickInSetup(stage::SetupPlaces::Place place)
{
    std::string last;
    const auto answer = askUntil(std::string("window ") + stage::SetupPlaces::Title,
        "the setup window does not come to rest", [&last](const std::string& now) {
            const std::string before = std::exchange(last, factOf(now, "area"));
            return factOf(now, "visible") == "yes" && before == last;
        });
    const auto area = areaOf(answer);
    studio.click(area[0] + place.x, area[1] + place.y);
}

void Scene::photograph(const std::string& name)
{
    try {
        studio.photograph(folder / (name + ".png"));
    } catch (const std::runtime_error& error) {
        std::cerr << "no picture " << name << ": " << error.what() << std::endl;
    }
}

std::filesystem::path Scene::writeSet(const std::string& name) const
{
    UserAssignFile set;
    set.initShortcutArray();
    assign(set, 1, { "A" });
    assign(set, 2, { "Command+C", "Option+F5", "A", "Shift+Command+Z" });
    assign(set, 6, { "Command+S" });
    set.setShortcutTitle(QString::fromStdString(name), 1);
    const auto image = set.fileImage();
    std::filesystem::create_directories(folder / "utility");
    auto path = folder / "utility" / (name + ".ZKCF");
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(image.data()),
            static_cast<std::streamsize>(image.size()));
    return path;
}

} // namespace kestrel::selftest
