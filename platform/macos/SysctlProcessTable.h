#pragma once

#include "platform/ProcessTable.h"

namespace kestrel {

// Reads the process table with sysctl().
class SysctlProcessTable final : public ProcessTable {
public:
    bool isRunning(std::string_view commandName) override;
};

} // namespace kestrel
