#include "tools/zenta-console/LineReader.h"

#include <unistd.h>

#include <cerrno>

namespace kestrel::console {

void LineReader::readMore()
{
    char buffer[4096];
    const ssize_t size = ::read(m_descriptor, buffer, sizeof buffer);
    if (size > 0)
        m_pending.append(buffer, static_cast<std::size_t>(size));
    else if (size == 0 || (errno != EINTR && errno != EAGAIN))
        m_isAtEnd = true;
}

void LineReader::rewind()
{
    ::lseek(m_descriptor, 0, SEEK_SET);
    m_pending.clear();
    m_isAtEnd = false;
}

std::optional<std::string> LineReader::next()
{
    const auto end = m_pending.find('\n');
    if (end == std::string::npos && (!m_isAtEnd || m_pending.empty()))
        return {};
    const std::string line = m_pending.substr(0, end);
    m_pending.erase(0, end == std::string::npos ? end : end + 1);
    return line;
}

} // namespace kestrel::console
