#include "tools/stage/TemporaryFolder.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace kestrel::stage {

TemporaryFolder::TemporaryFolder(const std::filesystem::path& parent)
{
    std::string pattern = parent / "kestrel-XXXXXX";
    if (!::mkdtemp(pattern.data()))
        throw std::system_error(errno, std::generic_category(), pattern);
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

} // namespace kestrel::stage
