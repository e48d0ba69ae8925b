#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace kestrel {

// The kernel's process table.
class ProcessTable {
public:
    virtual ~ProcessTable() = default;

    // Every process as one 648-byte record (see ProcessRecords.h); missing when the kernel refuses.
    [[nodiscard]] virtual std::optional<std::vector<std::byte>> read() = 0;
};

} // namespace kestrel
