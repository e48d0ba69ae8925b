#pragma once

#include "platform/MIDIServices.h"

#include <optional>
#include <string>
#include <vector>

namespace kestrel {

// What can be seen of the system and the user's session from outside of the running program. All
// texts are in UTF-8.
struct SystemFacts {
    enum class Session { X11, Wayland, MacOS };
    enum class MIDI { Answers, Silent };
    // The library through which programs of this session reach the MIDI service.
    enum class Library { CoreMIDI, JACK, PipeWire };

    struct Display {
        Session session = Session::X11;
        std::string name; // value of DISPLAY; empty when it is not set
        bool answers = false;
        std::string qtPlugin; // value of QT_QPA_PLATFORM
        std::optional<std::string> front; // the application in front
        std::optional<bool> hasTray; // no value where there always is one or nobody can know
        // The classes of the workstation's windows. No value when nobody can know.
        std::optional<std::vector<std::string>> workstationWindows;
    };
    struct MIDIService {
        MIDI state = MIDI::Silent;
        Library library = Library::JACK;
        std::optional<Library> libraryOfKestrel; // that the running program has loaded
        std::vector<MIDIDevice> devices;
        bool serverRuns = false; // the process of jackd
        std::string pipeWireProperties; // PIPEWIRE_PROPS of the running program, or else of this
        std::optional<bool> hasDriver; // of the console; no value where it needs none
    };
    struct Files {
        std::string sessionProblem; // why the folder of the session cannot be used; a sentence
        std::string defaultsProblem; // why their file cannot be read; empty if it can
        std::string damagedDefaults; // path of a copy that was kept aside; empty for none
        int leftoverKeys = 0; // in the journal of a run that has ended, and down
        std::optional<std::string> openedBy; // the program that opens sets; no value if unknown
    };
    struct Autostart {
        bool isEnabled = false;
        std::string missingProgram; // that is to be started and is not there
    };

    Display display;
    bool workstationRuns = false;
    MIDIService midi;
    Files files;
    std::optional<Autostart> autostart; // no value where only the utility itself can know
};

// Looks for a few seconds at most. `kestrel` is the process number of the running program, 0 if
// none runs. Changes nothing. Each platform folder defines it once.
[[nodiscard]] SystemFacts gatherSystemFacts(long kestrel);

} // namespace kestrel
