#include "tools/stage/Studio.h"

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace kestrel::stage {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (fs::temp_directory_path() / "kestrel-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::system_error(errno, std::generic_category(), "mkdtemp");
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

Studio::Studio(fs::path programs)
    : Studio(std::move(programs), Options {})
{
}

Studio::Studio(fs::path programs, const Options& options)
    : m_programs(std::move(programs))
{
    for (const char* folder : { "config", "runtime", "state", "data" }) {
        fs::create_directory(m_home.path() / folder);
        fs::permissions(m_home.path() / folder, fs::perms::owner_all);
    }
    if (!options.useSessionDisplay)
        m_display
            = std::make_unique<PrivateXServer>(PrivateXServer::Options { .tray = options.tray });
    if (!options.useSessionJack)
        m_jack = std::make_unique<PrivateJackServer>(PrivateJackServer::Cycles::WaitForClients);
}

ChildProcess::Environment Studio::environment() const
{
    ChildProcess::Environment result;
    if (m_display)
        result.merge(m_display->environment());
    if (m_jack)
        result.merge(m_jack->environment());
    result["XDG_CONFIG_HOME"] = configFolder().string();
    result["XDG_RUNTIME_DIR"] = (m_home.path() / "runtime").string();
    result["XDG_STATE_HOME"] = (m_home.path() / "state").string();
    result["XDG_DATA_HOME"] = (m_home.path() / "data").string();
    // No session bus: whatever the user's own session offers stays out of the studio.
    result["DBUS_SESSION_BUS_ADDRESS"] = "disabled:";
    return result;
}

std::string Studio::displayName() const
{
    if (m_display)
        return m_display->display();
    const char* name = std::getenv("DISPLAY");
    return name ? name : "";
}

void Studio::assign(const std::vector<std::string>& arguments) const
{
    const auto process = start("kestrel-assign", arguments);
    if (process->wait(milliseconds(10000)) != 0)
        throw std::runtime_error("kestrel-assign refused its arguments");
}

std::unique_ptr<ChildProcess> Studio::start(
    const std::string& program, const std::vector<std::string>& arguments) const
{
    std::vector<std::string> command { (m_programs / program).string() };
    command.insert(command.end(), arguments.begin(), arguments.end());
    return std::make_unique<ChildProcess>(std::move(command), environment());
}

bool Studio::photograph(const fs::path& picture) const
{
    ChildProcess import({ "import", "-window", "root", picture.string() }, environment());
    return import.wait(milliseconds(20000)) == 0;
}

} // namespace kestrel::stage
