#pragma once

#include "platform/ProcessTable.h"

namespace kestrel {

// The process table as sysctl copies it out.
class SysctlProcessTable final : public ProcessTable {
public:
    bool isRunning(std::string_view commandName) override;
};

} // namespace kestrel
