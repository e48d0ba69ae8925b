#include "platform/SessionFolder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace kestrel {

namespace {
std::string fromEnvironment(const char* name)
{
    const char* const value = std::getenv(name);
    return value && *value == '/' ? std::string(value) : std::string();
}

// In a folder of another user, or one that others can write into, they could put files of theirs in
// the place of ours. The bits are asked for as well because root has access without them.
bool isUsable(const std::string& folder)
{
    struct stat status { };
    return ::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode)
        && status.st_uid == ::geteuid() && (status.st_mode & S_IRWXU) == S_IRWXU
        && (status.st_mode & (S_IWGRP | S_IWOTH)) == 0
        && ::access(folder.c_str(), W_OK | X_OK) == 0;
}
} // namespace

// $XDG_RUNTIME_DIR, else $XDG_STATE_HOME, else ~/.local/state.
std::string sessionFolder()
{
    if (auto runtime = fromEnvironment("XDG_RUNTIME_DIR"); isUsable(runtime))
        return runtime;
    std::string state = fromEnvironment("XDG_STATE_HOME");
    if (const auto home = fromEnvironment("HOME"); state.empty() && !home.empty())
        state = home + "/.local/state";
    if (state.empty())
        return {};
    std::error_code error;
    std::filesystem::create_directories(state, error);
    return state;
}

} // namespace kestrel
