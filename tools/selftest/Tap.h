#pragma once

#include <cstddef>
#include <ostream>
#include <string>

namespace kestrel::selftest {

// Writes results in the Test Anything Protocol.
class Tap {
public:
    explicit Tap(std::ostream& out)
        : m_out(out)
    {
    }

    void plan(std::size_t checks);
    void ok(const std::string& name);
    // Each line of `reason` becomes a comment.
    void notOk(const std::string& name, const std::string& reason);
    void skip(const std::string& name, const std::string& reason);
    void comment(const std::string& text);

    [[nodiscard]] std::size_t failed() const { return m_failed; }
    [[nodiscard]] std::size_t skipped() const { return m_skipped; }
    [[nodiscard]] std::size_t passed() const { return m_number - m_failed - m_skipped; }

private:
    std::ostream& m_out;
    std::size_t m_number = 0;
    std::size_t m_failed = 0;
    std::size_t m_skipped = 0;
};

} // namespace kestrel::selftest
