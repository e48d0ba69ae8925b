#include "link/ConsoleDevice.h"
#include "tools/kestrelctl/doctor/Checks.h"

#include <algorithm>

namespace kestrel::ctl {

namespace {
using Library = SystemFacts::Library;

constexpr int PairsNeeded = static_cast<int>(ConsoleDevice::ControlSurfaceEntity) + 1;
const std::string Model(ConsoleDevice::Model);

std::string nameOf(Library library)
{
    switch (library) {
    case Library::CoreMIDI:
        return "CoreMIDI";
    case Library::JACK:
        return "JACK";
    case Library::PipeWire:
        break;
    }
    return "PipeWire";
}

// The library that decides: that of the running program, or else that of this one.
Library libraryInUse(const SystemFacts::MIDIService& midi)
{
    return midi.libraryOfKestrel.value_or(midi.library);
}

struct Ports {
    int sources = 0;
    int destinations = 0;
    int pairs = 0;
};

Ports portsOf(const MIDIDevice& device)
{
    Ports ports;
    for (const MIDIEntity& entity : device.entities) {
        ports.sources += static_cast<int>(entity.sources.size());
        ports.destinations += static_cast<int>(entity.destinations.size());
        ports.pairs += !entity.sources.empty() && !entity.destinations.empty() ? 1 : 0;
    }
    return ports;
}

std::string withoutBlanks(std::string text)
{
    std::erase(text, ' ');
    return text;
}
} // namespace

std::optional<Finding> ConsoleChecks::service(const DoctorFacts& facts)
{
    const SystemFacts::MIDIService& midi = facts.system.midi;
    if (midi.state == SystemFacts::MIDI::Answers)
        return fine(nameOf(midi.library) + " answers.");
    switch (midi.library) {
    case Library::CoreMIDI:
        return wrong("CoreMIDI does not answer. Log out and in again.");
    case Library::PipeWire:
        return wrong("PipeWire does not answer. Start it: systemctl --user start pipewire");
    case Library::JACK:
        break;
    }
    if (midi.serverRuns)
        return wrong("jackd runs and does not answer. Start it again.");
    return wrong("No JACK server answers. Start jackd as this user, or install pipewire-jack and "
                 "start Kestrel with pw-jack kestrel");
}

std::optional<Finding> ConsoleChecks::library(const DoctorFacts& facts)
{
    const SystemFacts::MIDIService& midi = facts.system.midi;
    if (midi.library == Library::CoreMIDI)
        return {};
    if (midi.serverRuns && libraryInUse(midi) == Library::PipeWire)
        return wrong("jackd runs, but Kestrel uses PipeWire's library. Start Kestrel and the "
                     "console both with pw-jack, or neither.");
    if (libraryInUse(midi) != midi.library)
        return wrong("Kestrel uses the library of " + nameOf(libraryInUse(midi))
            + ", and kestrelctl that of " + nameOf(midi.library)
            + ". Start both with pw-jack, or neither.");
    return fine("Programs use the library of " + nameOf(midi.library) + '.');
}

std::optional<Finding> ConsoleChecks::pipeWire(const DoctorFacts& facts)
{
    const SystemFacts::MIDIService& midi = facts.system.midi;
    if (libraryInUse(midi) != Library::PipeWire)
        return {};
    const std::string properties = withoutBlanks(midi.pipeWireProperties);
    if (properties.empty() || properties.find("jack.fix-midi-events=false") != std::string::npos)
        return fine("PipeWire passes the heartbeat unchanged.");
    return wrong("PIPEWIRE_PROPS is set without jack.fix-midi-events = false, so the heartbeat "
                 "does not arrive. Add it, or unset the variable.");
}

std::optional<Finding> ConsoleChecks::driver(const DoctorFacts& facts)
{
    const auto& hasDriver = facts.system.midi.hasDriver;
    if (!hasDriver)
        return {};
    if (*hasDriver)
        return fine("The console's driver is installed.");
    return wrong("The console's driver is not installed. Install it and restart the computer.");
}

std::optional<Finding> ConsoleChecks::console(const DoctorFacts& facts)
{
    const SystemFacts::MIDIService& midi = facts.system.midi;
    if (midi.state != SystemFacts::MIDI::Answers)
        return {};
    const auto found = std::find_if(midi.devices.begin(), midi.devices.end(),
        [](const MIDIDevice& device) { return device.model == Model; });
    if (found == midi.devices.end())
        return wrong("There is no MIDI device \"" + Model
            + "\". Check the console's cable, its power and its driver.");
    const Ports ports = portsOf(*found);
    if (ports.pairs < PairsNeeded)
        return wrong("\"" + Model + "\" has " + std::to_string(ports.sources) + " sources and "
            + std::to_string(ports.destinations) + " destinations, and Kestrel needs "
            + std::to_string(PairsNeeded) + " pairs. The fifth pair carries the traffic.");
    return fine("\"" + Model + "\" has " + std::to_string(ports.pairs) + " pairs of ports.");
}

} // namespace kestrel::ctl
