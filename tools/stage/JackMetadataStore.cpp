#include "tools/stage/JackMetadataStore.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <string>
#include <system_error>

namespace kestrel::stage {

namespace {
using std::filesystem::directory_iterator;
using std::filesystem::path;

// The device as /proc/PID/maps shows it. Programs with shared memory of their own have a folder of
// the same name on another device.
std::string deviceOf(const std::string& folder)
{
    struct stat status { };
    if (::stat(folder.c_str(), &status) != 0)
        return {};
    std::array<char, 32> text;
    std::snprintf(
        text.data(), text.size(), " %02x:%02x ", major(status.st_dev), minor(status.st_dev));
    return text.data();
}

// A process that has the database open maps its files. The maps of other users cannot be read, but
// they have databases of their own.
bool maps(const path& process, const std::string& folder, const std::string& device)
{
    std::ifstream file(process / "maps");
    for (std::string line; std::getline(file, line);) {
        if (line.find(folder) != std::string::npos && line.find(device) != std::string::npos)
            return true;
    }
    return false;
}

bool isUsed(const std::string& folder)
{
    const std::string device = deviceOf(folder);
    const directory_iterator processes("/proc");
    return std::any_of(begin(processes), end(processes),
        [&](const auto& process) { return maps(process.path(), folder, device); });
}
} // namespace

path jackMetadataFolder()
{
    return "/dev/shm/jack_db-" + std::to_string(::getuid());
}

void removeUnusedJackMetadata()
{
    const path folder = jackMetadataFolder();
    std::error_code ignored;
    if (std::filesystem::exists(folder, ignored) && !isUsed(folder.string() + "/"))
        std::filesystem::remove_all(folder, ignored);
}

} // namespace kestrel::stage
