#include "platform/Platform.h"
#include "platform/StoredDefaults.h"
#include "platform/linux/autostart/AutostartLoginItem.h"
#include "platform/linux/midi/JackMIDIServices.h"
#include "platform/linux/midi/JackNotice.h"
#include "platform/linux/system/SessionEnvironment.h"
#include "platform/linux/system/SystemAdapters.h"
#include "platform/linux/x11/X11Adapters.h"
#include "platform/linux/x11/X11Connector.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace kestrel {

namespace {
constexpr std::chrono::seconds DisplayPatience { 10 }; // Qt would wait without end
} // namespace

Platform makePlatform(MainLoop& mainLoop)
{
    X11Adapters x11 = makeX11Adapters(mainLoop);
    StoredDefaults defaults = openStoredDefaults();
    auto midiServices = std::make_unique<JackMIDIServices>(mainLoop);
    auto notices = std::make_unique<JackNotice>(*midiServices, makeNotices());
    return {
        .midiServices = std::move(midiServices),
        .workspace = std::move(x11.workspace),
        .keyEvents = std::move(x11.keyEvents),
        .keyTranslation = std::move(x11.keyTranslation),
        .processTable = makeProcessTable(),
        .documentFiles = makeDocumentFiles(),
        .windowTraits = std::move(x11.windowTraits),
        .permissions = makePermissions(),
        .notices = std::move(notices),
        .loginItem = makeAutostartLoginItem(),
        .defaults = std::move(defaults.store),
        .recoveryFile = std::move(defaults.recoveryFile),
    };
}

std::optional<std::string> prepareSession()
{
    prepareEnvironment();
    const char* const backEnd = ::getenv("QT_QPA_PLATFORM");
    if (!backEnd || std::string_view(backEnd) != "xcb")
        return {};
    const auto connected = X11Connector().connect(DisplayPatience);
    if (connected && xcb_connection_has_error(connected->xcb.get()) == 0)
        return {};
    const char* const display = ::getenv("DISPLAY");
    std::string problem = "Kestrel needs an X11 display, and ";
    if (!display)
        return problem.append("DISPLAY is not set.");
    return problem.append("\"").append(display).append("\" does not answer.");
}

void afterFilesOfLaunch(const std::function<void()>& then)
{
    then();
}

std::vector<int> endingSignals()
{
    std::vector<int> numbers { SIGHUP, SIGINT, SIGQUIT, SIGUSR1, SIGUSR2, SIGALRM, SIGTERM,
        SIGSTKFLT, SIGXCPU, SIGVTALRM, SIGPROF, SIGIO, SIGPWR };
    for (int number = SIGRTMIN; number <= SIGRTMAX; ++number)
        numbers.push_back(number);
    return numbers;
}

} // namespace kestrel
