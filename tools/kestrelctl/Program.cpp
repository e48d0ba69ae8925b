#include "tools/kestrelctl/Program.h"

#include <string>

namespace kestrel::ctl {

Program::Program()
    : options(std::make_unique<CLI::App>(
        "Talks with the running Kestrel, and works on what it has stored.", "kestrelctl"))
{
    options->set_version_flag("--version", "kestrelctl " KESTREL_VERSION);
    options->get_option("--version")->description("Print the version and end");
    options->set_help_flag("-h,--help", "Print a summary and end");
    options->get_formatter()->label("SUBCOMMAND", "COMMAND");
    options->failure_message([](const CLI::App*, const CLI::Error& error) {
        return "kestrelctl: " + std::string(error.what()) + "\nTry \"kestrelctl --help\".\n";
    });
    run = defineCommands(*options, commandTable());
    options->footer("\"kestrelctl COMMAND --help\" explains a command.");
}

} // namespace kestrel::ctl
