#include "tests/end-to-end/RunningStudio.h"

#include "tools/stage/KeyLines.h"
#include "tools/stage/KeysDown.h"
#include "tools/stage/Screen.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>
#include <thread>

namespace kestrel::test {

namespace {
// A socket file that a crash has left behind exists too, but no process listens on it.
bool isListening(const std::string& path)
{
    sockaddr_un address {};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected
        = ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    ::close(descriptor);
    return connected;
}

} // namespace

RunningStudio::RunningStudio()
    : RunningStudio(stage::Studio::Options {})
{
}

RunningStudio::RunningStudio(const stage::Studio::Options& options)
    : studio(KESTREL_PROGRAMS, options)
{
}

void RunningStudio::startWorkstation()
{
    workstation = studio.start("Pro Tools");
    waitUntilInFront("Pro Tools");
}

void RunningStudio::waitUntilInFront(const std::string& windowClass) const
{
    const stage::Screen screen(studio.displayName());
    for (int look = 0; screen.activeWindowClass() != windowClass; ++look) {
        if (look == 2000)
            throw std::runtime_error("the window of " + windowClass + " did not come to the front");
        std::this_thread::sleep_for(stage::milliseconds(10));
    }
}

void RunningStudio::startConsole(const std::vector<std::string>& arguments)
{
    console = studio.start("zenta-console", arguments);
}

void RunningStudio::startKestrel(const std::vector<std::string>& arguments)
{
    kestrel = studio.start("kestrel", arguments);
    const auto socket = studio.home() / "runtime" / "kestrel" / "kestrel.socket";
    for (int look = 0; !isListening(socket.string()); ++look) {
        if (look == 2000)
            throw std::runtime_error("kestrel did not come up");
        std::this_thread::sleep_for(stage::milliseconds(10));
    }
}

RunningStudio::Process RunningStudio::startOtherApplication()
{
    auto other = studio.start("Pro Tools", { "--class", "Notepad", "--title", "Notepad" });
    waitUntilInFront("Notepad");
    return other;
}

void RunningStudio::startEverything()
{
    startWorkstation();
    startConsole();
    startKestrel();
}

bool RunningStudio::isAnswered(stage::milliseconds timeout)
{
    static_cast<void>(console->linesUntilQuiet(stage::milliseconds(0)));
    return console->waitForLineWith("answer 90 00 7F", timeout).has_value();
}

RunningStudio::Keys RunningStudio::keysAfter(const std::string& consoleCommand)
{
    console->writeLine(consoleCommand);
    return arrivingKeys(*workstation);
}

RunningStudio::Keys RunningStudio::arrivingKeys(stage::ChildProcess& window) const
{
    const auto first = window.waitForLine(stage::isKeyLine, KeyTimeout);
    if (!first)
        return {};
    Keys keys = strayKeys(window);
    keys.insert(keys.begin(), stage::briefKeyLine(*first));
    return keys;
}

RunningStudio::Keys RunningStudio::strayKeysAfter(const std::string& consoleCommand)
{
    console->writeLine(consoleCommand);
    return strayKeys(*workstation);
}

RunningStudio::Keys RunningStudio::strayKeys(stage::ChildProcess& window) const
{
    Keys keys;
    for (const auto& line : window.linesUntilQuiet(Quiet)) {
        if (stage::isKeyLine(line))
            keys.push_back(stage::briefKeyLine(line));
    }
    return keys;
}

bool RunningStudio::allKeysComeUp() const
{
    for (int look = 0; look < 1000; ++look) {
        if (stage::keysDown(studio.displayName()).empty())
            return true;
        std::this_thread::sleep_for(stage::milliseconds(10));
    }
    return false;
}

std::optional<int> RunningStudio::terminateKestrel()
{
    kestrel->signal(SIGTERM);
    return kestrel->wait(stage::milliseconds(10000));
}

} // namespace kestrel::test
