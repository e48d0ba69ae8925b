#include "tools/zenta-console/LineReader.h"

#include <unistd.h>

#include <cerrno>

namespace kestrel::console {

void LineReader::readMore()
{
    m_pending.erase(0, m_taken);
    m_taken = 0;
    char buffer[65536];
    const ssize_t size = ::read(m_descriptor, buffer, sizeof buffer);
    if (size > 0)
        m_pending.append(buffer, static_cast<std::size_t>(size));
    else if (size == 0)
        m_isAtEnd = true;
    else if (errno != EINTR && errno != EAGAIN)
        fail(errno);
}

void LineReader::fail(int error)
{
    m_error = { error, std::generic_category() };
    m_isAtEnd = true;
}

void LineReader::rewind()
{
    ::lseek(m_descriptor, 0, SEEK_SET);
    m_pending.clear();
    m_taken = 0;
    m_isAtEnd = false;
}

std::optional<std::string> LineReader::next()
{
    const auto end = m_pending.find('\n', m_taken);
    const bool isLast = end == std::string::npos;
    if (isLast && (!m_isAtEnd || m_taken == m_pending.size()))
        return {};
    std::string line = m_pending.substr(m_taken, isLast ? end : end - m_taken);
    m_taken = isLast ? m_pending.size() : end + 1;
    return line;
}

} // namespace kestrel::console
