#pragma once

#include "tools/kestrelctl/Command.h"

// The commands after "kestrelctl set".
namespace kestrel::ctl {

Run defineSetCheck(CLI::App& options);
Run defineSetDiff(CLI::App& options);
Run defineSetFromJson(CLI::App& options);
Run defineSetJson(CLI::App& options);
Run defineSetMerge(CLI::App& options);
Run defineSetSheet(CLI::App& options);
Run defineSetShow(CLI::App& options);

} // namespace kestrel::ctl
