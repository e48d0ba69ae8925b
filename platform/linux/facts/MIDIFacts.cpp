#include "platform/linux/facts/MIDIFacts.h"

#include "platform/IdleLoop.h"
#include "platform/linux/midi/JackMIDIServices.h"
#include "platform/linux/system/SystemAdapters.h"

#include <chrono>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace kestrel {

namespace {
constexpr std::chrono::seconds Patience { 2 };
constexpr std::string_view Variable = "PIPEWIRE_PROPS=";

std::string content(const std::string& process, const char* name)
{
    std::ifstream file("/proc/" + process + '/' + name);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

// What the user has set for the process before it began.
std::string pipeWireProperties(const std::string& process)
{
    std::istringstream environment(content(process, "environ"));
    for (std::string entry; std::getline(environment, entry, '\0');) {
        if (entry.starts_with(Variable))
            return entry.substr(Variable.size());
    }
    return {};
}

} // namespace

std::optional<SystemFacts::Library> libraryIn(const std::string& mappings)
{
    std::istringstream lines(mappings);
    for (std::string line; std::getline(lines, line);) {
        if (line.find("/libjack.so") == std::string::npos)
            continue;
        return line.find("pipewire") == std::string::npos ? SystemFacts::Library::JACK
                                                          : SystemFacts::Library::PipeWire;
    }
    return {};
}

SystemFacts::MIDIService midiFacts(long kestrel)
{
    SystemFacts::MIDIService facts;
    facts.library = libraryIn(content("self", "maps")).value_or(SystemFacts::Library::JACK);
    if (kestrel != 0)
        facts.libraryOfKestrel = libraryIn(content(std::to_string(kestrel), "maps"));
    facts.pipeWireProperties = pipeWireProperties(kestrel != 0 ? std::to_string(kestrel) : "self");
    const auto processes = makeProcessTable();
    facts.serverRuns = processes->isRunning("jackd") || processes->isRunning("jackdbus");

    IdleLoop loop;
    JackMIDIServices services(loop, Patience);
    const auto ignore = [](const MIDINotification&, void*) {};
    const auto client = services.createClient("kestrelctl", ignore, nullptr);
    if (!client)
        return facts;
    facts.state = SystemFacts::MIDI::Answers;
    facts.devices = services.devices();
    services.disposeClient(*client);
    return facts;
}

} // namespace kestrel
