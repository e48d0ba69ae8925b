#pragma once

#include "tools/stage/ChildProcess.h"
#include "tools/stage/TemporaryFolder.h"

namespace kestrel::stage {

// A process table that holds only the programs of one studio, so that a "Pro Tools" elsewhere on
// the machine changes nothing. A preloaded library makes programs that list /proc read the folder
// of this table instead. A PID namespace would do the same, but many containers forbid it, and JACK
// takes servers in another namespace for dead and reuses their memory.
class OwnProcesses {
public:
    // The environment that makes a program read this table.
    [[nodiscard]] ChildProcess::Environment environment() const;
    // Throws std::filesystem::filesystem_error when the table cannot be written.
    void add(pid_t process) const;

private:
    TemporaryFolder m_folder; // one link into /proc per process; it dangles after the process
};

} // namespace kestrel::stage
