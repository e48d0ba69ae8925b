#include "tools/kestrelctl/doctor/Checks.h"

namespace kestrel::ctl {

std::span<const NamedCheck> checks()
{
    static constexpr NamedCheck Table[] = {
        { "kestrel", ProgramChecks::kestrel },
        { "start", ProgramChecks::start },
        { "display", KeyChecks::display },
        { "session", KeyChecks::session },
        { "tray", ProgramChecks::tray },
        { "MIDI", ConsoleChecks::service },
        { "library", ConsoleChecks::library },
        { "PipeWire", ConsoleChecks::pipeWire },
        { "driver", ConsoleChecks::driver },
        { "console", ConsoleChecks::console },
        { "link", ProgramChecks::link },
        { "workstation", KeyChecks::workstation },
        { "window", KeyChecks::window },
        { "front", KeyChecks::front },
        { "permission", KeyChecks::permission },
        { "held keys", KeyChecks::leftoverKeys },
        { "defaults", ProgramChecks::defaults },
        { "copies", ProgramChecks::damagedCopies },
        { "login", ProgramChecks::autostart },
        { "file type", ProgramChecks::fileType },
    };
    return Table;
}

} // namespace kestrel::ctl
