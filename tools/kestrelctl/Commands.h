#pragma once

#include "tools/kestrelctl/Command.h"

// The commands, each in a source of its own: defineAssign() is in AssignCommand.cpp.
namespace kestrel::ctl {

Run defineActivity(CLI::App& options);
Run defineAssign(CLI::App& options);
Run defineCompletion(CLI::App& options);
Run defineDoctor(CLI::App& options);
Run defineRecord(CLI::App& options);
Run defineSet(CLI::App& options);
Run defineShow(CLI::App& options);
Run defineStatus(CLI::App& options);

} // namespace kestrel::ctl
