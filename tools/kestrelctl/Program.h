#pragma once

#include "tools/kestrelctl/Command.h"

#include <memory>

namespace kestrel::ctl {

// The whole command line, as main() parses it and completions describe it.
struct Program {
    Program();

    std::unique_ptr<CLI::App> options;
    Run run;
};

} // namespace kestrel::ctl
