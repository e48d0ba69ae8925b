#pragma once

#include "platform/ProcessTable.h"

namespace kestrel {

// The process table as sysctl copies it out.
class SysctlProcessTable final : public ProcessTable {
public:
    std::optional<std::vector<std::byte>> read() override;
};

} // namespace kestrel
