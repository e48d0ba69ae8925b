#include "tools/stage/JackMetadataStore.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <system_error>

namespace kestrel::stage {

namespace {
using std::filesystem::directory_iterator;
using std::filesystem::path;

// A process that has the database open maps its files. The maps of other users cannot be read, but
// they have databases of their own.
bool maps(const path& process, const std::string& folder)
{
    std::ifstream file(process / "maps");
    for (std::string line; std::getline(file, line);) {
        if (line.find(folder) != std::string::npos)
            return true;
    }
    return false;
}

bool isUsed(const std::string& folder)
{
    const directory_iterator processes("/proc");
    return std::any_of(begin(processes), end(processes),
        [&](const auto& process) { return maps(process.path(), folder); });
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
