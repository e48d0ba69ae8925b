#pragma once

#include <string_view>

namespace kestrel {

// Asks the kernel which processes run.
class ProcessTable {
public:
    virtual ~ProcessTable() = default;

    // True when a process has exactly this command name, the short name that the kernel keeps. Also
    // false when the kernel does not give its list of processes.
    [[nodiscard]] virtual bool isRunning(std::string_view commandName) = 0;
};

} // namespace kestrel
