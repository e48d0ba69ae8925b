#pragma once

#include "tools/kestrelctl/doctor/Checks.h"

#include <algorithm>
#include <vector>

namespace kestrel::test {

inline MIDIDevice device(const char* model, std::size_t sources, std::size_t destinations)
{
    MIDIDevice device { model, std::vector<MIDIEntity>(std::max(sources, destinations)) };
    for (std::size_t i = 0; i < sources; ++i)
        device.entities[i].sources.emplace_back();
    for (std::size_t i = 0; i < destinations; ++i)
        device.entities[i].destinations.emplace_back();
    return device;
}

// The facts of a studio on Linux in which everything works.
inline ctl::DoctorFacts soundFacts()
{
    ctl::DoctorFacts facts;
    facts.kestrel = ctl::RunningKestrel::Outcome::Answered;
    StatusReport status;
    status.version = "1.2.3";
    status.process = 4711;
    status.link = StatusReport::Online;
    status.mayPostKeys = true;
    facts.status = status;
    facts.system.display.name = ":0";
    facts.system.display.answers = true;
    facts.system.display.front = "Pro Tools";
    facts.system.display.hasTray = true;
    facts.system.display.workstationWindows = { "Pro Tools" };
    facts.system.workstationRuns = true;
    facts.system.midi.state = SystemFacts::MIDI::Answers;
    facts.system.midi.libraryOfKestrel = SystemFacts::Library::JACK;
    facts.system.midi.serverRuns = true;
    facts.system.midi.devices = { device("system", 1, 0), device("ZENTA", 5, 5) };
    facts.system.autostart = SystemFacts::Autostart();
    facts.system.files.openedBy = "com.holvik.kestrel.desktop";
    facts.defaults.place = "/home/me/.config/com.holvik.kestrel.plist";
    return facts;
}

// The same on a Mac.
inline ctl::DoctorFacts soundMac()
{
    ctl::DoctorFacts facts = soundFacts();
    facts.system.display = { SystemFacts::Session::MacOS, {}, true, {}, "Pro Tools", {}, {} };
    facts.system.midi.library = SystemFacts::Library::CoreMIDI;
    facts.system.midi.libraryOfKestrel = {};
    facts.system.midi.serverRuns = false;
    facts.system.midi.hasDriver = true;
    facts.system.files.openedBy = {};
    facts.system.autostart = {};
    return facts;
}

} // namespace kestrel::test
