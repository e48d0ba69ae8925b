#include "tools/stage/Studio.h"

#include <cstdlib>
#include <stdexcept>

namespace kestrel::stage {

namespace fs = std::filesystem;

Studio::Studio(fs::path programs)
    : Studio(std::move(programs), Options {})
{
}

Studio::Studio(fs::path programs, const Options& options)
    : m_programs(std::move(programs))
{
    if (!options.useSessionDisplay)
        m_display = std::make_unique<PrivateXServer>(
            PrivateXServer::Options { .screen = options.screen, .tray = options.tray });
    if (!options.useSessionJack)
        m_jack = std::make_unique<PrivateJackServer>(options.cycles);
    if (options.sessionBus)
        m_sessionBus = std::make_unique<PrivateSessionBus>(environment());
}

ChildProcess::Environment Studio::environment() const
{
    ChildProcess::Environment result = m_settings.environment();
    result.merge(m_processes.environment());
    if (m_display)
        result.merge(m_display->environment());
    if (m_jack)
        result.merge(m_jack->environment());
    if (m_sessionBus)
        result.insert_or_assign("DBUS_SESSION_BUS_ADDRESS", m_sessionBus->address());
    // Tests compare pictures, so Qt must draw one pixel per unit, as it does on the private
    // displays.
    result.insert_or_assign("QT_ENABLE_HIGHDPI_SCALING", std::string("0"));
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
    std::vector<std::string> command { "assign" };
    command.insert(command.end(), arguments.begin(), arguments.end());
    const auto process = start("kestrelctl", command);
    if (process->wait(milliseconds(10000)) != 0)
        throw std::runtime_error("kestrelctl refused its arguments");
}

std::unique_ptr<ChildProcess> Studio::start(const std::string& program,
    const std::vector<std::string>& arguments, const ChildProcess::Environment& added) const
{
    std::vector<std::string> command { (m_programs / program).string() };
    command.insert(command.end(), arguments.begin(), arguments.end());
    ChildProcess::Environment all = added;
    all.merge(environment());
    auto process = std::make_unique<ChildProcess>(command, all);
    m_processes.add(process->pid());
    return process;
}

bool Studio::photograph(const fs::path& picture) const
{
    return photograph("root", picture);
}

bool Studio::photograph(const fs::path& picture, const ShownWindow& window) const
{
    return photograph(std::to_string(window.id), picture);
}

bool Studio::photograph(const std::string& window, const fs::path& picture) const
{
    ChildProcess import({ "import", "-window", window, picture.string() }, environment());
    return import.wait(milliseconds(20000)) == 0;
}

} // namespace kestrel::stage
