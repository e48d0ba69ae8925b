#pragma once

#include "platform/ProcessTable.h"

#include <filesystem>

namespace kestrel {

// The process table from /proc, in the records that the search goes through.
class ProcProcessTable final : public ProcessTable {
public:
    explicit ProcProcessTable(std::filesystem::path root = "/proc");

    [[nodiscard]] std::optional<std::vector<std::byte>> read() override;

private:
    std::filesystem::path m_root;
};

} // namespace kestrel
