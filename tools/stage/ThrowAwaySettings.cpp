#include "tools/stage/ThrowAwaySettings.h"

#include <array>

namespace kestrel::stage {

namespace {
namespace fs = std::filesystem;

struct Place {
    const char* variable;
    const char* folder;
};

constexpr std::array Places {
    Place { "XDG_CONFIG_HOME", "config" },
    Place { "XDG_RUNTIME_DIR", "runtime" },
    Place { "XDG_STATE_HOME", "state" },
    Place { "XDG_DATA_HOME", "data" },
    Place { "XDG_CACHE_HOME", "cache" },
};
} // namespace

ThrowAwaySettings::ThrowAwaySettings()
{
    for (const Place& place : Places) {
        fs::create_directory(home() / place.folder);
        fs::permissions(home() / place.folder, fs::perms::owner_all);
    }
}

ChildProcess::Environment ThrowAwaySettings::environment() const
{
    ChildProcess::Environment result;
    for (const Place& place : Places)
        result[place.variable] = (home() / place.folder).string();
    // No session bus, so that the program cannot reach services of the user's session.
    result["DBUS_SESSION_BUS_ADDRESS"] = "disabled:";
    return result;
}

} // namespace kestrel::stage
