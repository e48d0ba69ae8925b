#pragma once

#include <string_view>

namespace kestrel {

// The processes that the kernel knows.
class ProcessTable {
public:
    virtual ~ProcessTable() = default;

    // True when a process has exactly this command name, the short name that the kernel keeps;
    // false also when the kernel refuses to say.
    [[nodiscard]] virtual bool isRunning(std::string_view commandName) = 0;
};

} // namespace kestrel
