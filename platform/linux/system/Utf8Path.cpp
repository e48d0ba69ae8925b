#include "platform/Utf8Path.h"

#include <fcntl.h>
#include <unistd.h>

namespace kestrel {

// The descriptor stays open until the process ends: it is what the path leads to.
std::optional<std::string> utf8PathTo(const char* path)
{
    const int descriptor = ::open(path, O_PATH | O_CLOEXEC);
    if (descriptor < 0)
        return {};
    return "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(descriptor);
}

} // namespace kestrel
