#pragma once

#include "tools/stage/ChildProcess.h"
#include "tools/stage/TemporaryFolder.h"

namespace kestrel::stage {

// A process table that holds only the programs of one studio, so that a "Pro Tools" elsewhere on
// the machine changes nothing. A preloaded library gives its folder to programs that list /proc.
// A PID namespace would do the same, but many containers forbid one, and JACK takes servers of
// another namespace for dead and reuses their memory.
class OwnProcesses {
public:
    // Sends a program to this table.
    [[nodiscard]] ChildProcess::Environment environment() const;
    // Throws std::filesystem::filesystem_error when the table cannot be written.
    void add(pid_t process) const;

private:
    TemporaryFolder m_folder; // a link into /proc for each process, dead once the process is gone
};

} // namespace kestrel::stage
