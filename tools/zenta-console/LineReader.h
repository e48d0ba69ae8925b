#pragma once

#include <optional>
#include <string>
#include <system_error>

namespace kestrel::console {

// Splits the input of a descriptor into lines.
class LineReader {
public:
    explicit LineReader(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    // Reads the available input. Waits when the descriptor is not readable.
    void readMore();
    // The next line without its line feed. No value until a whole line has come. At the end of the
    // input, the last line needs no line feed.
    [[nodiscard]] std::optional<std::string> next();

    // Begins again at the start of a file.
    void rewind();

    [[nodiscard]] int descriptor() const { return m_descriptor; }
    // Also after an error.
    [[nodiscard]] bool isAtEnd() const { return m_isAtEnd; }
    // Why the input could not be read to its end.
    [[nodiscard]] std::error_code error() const { return m_error; }

private:
    void fail(int error);

    const int m_descriptor;
    std::string m_pending;
    std::size_t m_taken = 0; // of m_pending
    bool m_isAtEnd = false;
    std::error_code m_error;
};

} // namespace kestrel::console
