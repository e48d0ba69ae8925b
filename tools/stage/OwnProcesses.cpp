#include "tools/stage/OwnProcesses.h"

#include <string>

namespace kestrel::stage {

ChildProcess::Environment OwnProcesses::environment() const
{
    return { { "LD_PRELOAD", KESTREL_OWN_PROCESSES },
        { "KESTREL_STAGE_PROCESSES", m_folder.path().string() } };
}

void OwnProcesses::add(pid_t process) const
{
    const std::string name = std::to_string(process);
    const auto link = m_folder.path() / name;
    std::filesystem::remove(link); // left by an earlier process with the same number
    std::filesystem::create_directory_symlink("/proc/" + name, link);
}

} // namespace kestrel::stage
