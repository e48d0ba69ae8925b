#include "bench/latency/Stage.h"

#include <stdlib.h>
#include <sys/prctl.h>

#include <stdexcept>
#include <system_error>

namespace kestrel::bench {

ThrowAwayFolder::ThrowAwayFolder()
{
    auto name = (std::filesystem::temp_directory_path() / "kestrel-bench-XXXXXX").string();
    if (!::mkdtemp(name.data()))
        throw std::system_error(errno, std::generic_category(), name);
    m_path = name;
}

ThrowAwayFolder::~ThrowAwayFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

Stage::Stage()
    : m_window(m_x.display())
    , m_console(m_jack.name())
{
    ::prctl(PR_SET_NAME, "Pro Tools");
    for (const char* name : { "config", "data", "cache", "runtime" })
        std::filesystem::create_directory(m_folder.path() / name);
    std::filesystem::permissions(m_folder.path() / "runtime", std::filesystem::perms::owner_all);
}

stage::ChildProcess::Environment Stage::environment() const
{
    auto environment = m_jack.environment();
    environment.merge(m_x.environment());
    environment["XDG_CONFIG_HOME"] = m_folder.path() / "config";
    environment["XDG_DATA_HOME"] = m_folder.path() / "data";
    environment["XDG_STATE_HOME"] = m_folder.path() / "data";
    environment["XDG_CACHE_HOME"] = m_folder.path() / "cache";
    environment["XDG_RUNTIME_DIR"] = m_folder.path() / "runtime";
    return environment;
}

} // namespace kestrel::bench
