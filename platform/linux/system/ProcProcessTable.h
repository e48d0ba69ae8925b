#pragma once

#include "platform/ProcessTable.h"

#include <string>

namespace kestrel {

// The processes of /proc with their short names, as the kernel keeps them: 15 bytes at the most.
class ProcProcessTable final : public ProcessTable {
public:
    explicit ProcProcessTable(std::string folder = "/proc");

    bool isRunning(std::string_view commandName) override;

private:
    std::string m_folder;
};

} // namespace kestrel
