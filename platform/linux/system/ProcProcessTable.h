#pragma once

#include "platform/ProcessTable.h"

#include <cstdint>
#include <string>

namespace kestrel {

// The processes of /proc with their short names, as the kernel keeps them: 15 bytes at the most.
class ProcProcessTable final : public ProcessTable {
public:
    explicit ProcProcessTable(std::string folder = "/proc");

    bool isRunning(std::string_view commandName) override;

    // Empty when there is no such process.
    [[nodiscard]] static std::string commandNameOf(std::uint32_t process);

private:
    std::string m_folder;
};

} // namespace kestrel
