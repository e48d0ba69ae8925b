#include "tools/kestrelctl/Commands.h"

namespace kestrel::ctl {

std::span<const Command> commandTable()
{
    static constexpr Command Table[] = {
        { "status", "Print what the running Kestrel does", defineStatus },
        { "activity", "Print what the console sends and what becomes of it", defineActivity },
        { "record", "Record that as a script that zenta-console plays", defineRecord },
        { "doctor", "Check what Kestrel needs, and say what to do", defineDoctor },
        { "assign", "Assign shortcuts or a title to a key of the console", defineAssign },
        { "show", "Print the stored assignments", defineShow },
        { "set", "Work on sets in files and on the stored one", defineSet },
        { "completion", "Print the completions for a shell", defineCompletion },
    };
    return Table;
}

} // namespace kestrel::ctl
