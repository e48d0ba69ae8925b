#include "platform/Utf8Path.h"

namespace kestrel {

// The file systems of macOS have no other names.
std::optional<std::string> utf8PathTo(const char*)
{
    return {};
}

} // namespace kestrel
