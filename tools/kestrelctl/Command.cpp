#include "tools/kestrelctl/Command.h"

#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kestrel::ctl {

Run defineCommands(CLI::App& parent, std::span<const Command> table)
{
    using Defined = std::pair<const CLI::App*, Run>;
    auto commands = std::make_shared<std::vector<Defined>>();
    for (const Command& command : table) {
        CLI::App* const options
            = parent.add_subcommand(command.name, command.summary)->group("Commands");
        commands->emplace_back(options, command.define(*options));
    }
    parent.require_subcommand(1);
    return [commands] {
        for (const auto& [options, run] : *commands) {
            if (options->parsed())
                return run();
        }
        return Misused;
    };
}

void complain(const std::string& sentence)
{
    std::fprintf(stderr, "kestrelctl: %s\n", sentence.c_str());
}

} // namespace kestrel::ctl
