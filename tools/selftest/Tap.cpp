#include "tools/selftest/Tap.h"

#include <sstream>

namespace kestrel::selftest {

namespace {
// A hash sign would begin a directive.
std::string plain(std::string text)
{
    for (char& c : text) {
        if (c == '#' || c == '\n')
            c = ' ';
    }
    return text;
}
} // namespace

void Tap::plan(std::size_t checks)
{
    m_out << "1.." << checks << std::endl;
}

void Tap::ok(const std::string& name)
{
    m_out << "ok " << ++m_number << " - " << plain(name) << std::endl;
}

void Tap::notOk(const std::string& name, const std::string& reason)
{
    ++m_failed;
    m_out << "not ok " << ++m_number << " - " << plain(name) << std::endl;
    comment(reason);
}

void Tap::skip(const std::string& name, const std::string& reason)
{
    ++m_skipped;
    m_out << "ok " << ++m_number << " - " << plain(name) << " # SKIP " << plain(reason)
          << std::endl;
}

void Tap::comment(const std::string& text)
{
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        m_out << "# " << line << std::endl;
}

} // namespace kestrel::selftest
