#pragma once

#include <optional>
#include <string>

namespace kestrel::console {

// Lines from a descriptor, as far as they have come.
class LineReader {
public:
    explicit LineReader(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    // Waits when the descriptor is not readable.
    void readMore();
    // The next line, without its end; at the end of input also one that is not ended.
    [[nodiscard]] std::optional<std::string> next();

    [[nodiscard]] int descriptor() const { return m_descriptor; }
    [[nodiscard]] bool isAtEnd() const { return m_isAtEnd; }

private:
    const int m_descriptor;
    std::string m_pending;
    bool m_isAtEnd = false;
};

} // namespace kestrel::console
