#include "tools/kestrelctl/Commands.h"
#include "tools/kestrelctl/SetCommands.h"

namespace kestrel::ctl {

Run defineSet(CLI::App& options)
{
    static constexpr Command Table[] = {
        { "show", "Print a set as a table", defineSetShow },
        { "json", "Print a set as JSON text, with all that it has", defineSetJson },
        { "from-json", "Make the set of a JSON text", defineSetFromJson },
        { "check", "Look for damage and for what is probably not meant", defineSetCheck },
        { "diff", "Print what differs between two sets", defineSetDiff },
        { "merge", "Merge two sets that were made from the same one", defineSetMerge },
        { "sheet", "Draw the keys with their names and shortcuts, to print", defineSetSheet },
    };
    options.footer("Where a set is read, its JSON text does as well.");
    return defineCommands(options, Table);
}

} // namespace kestrel::ctl
