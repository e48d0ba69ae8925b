#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace kestrel {

struct FileCodes {
    std::uint32_t type = 0; // four-character codes, first character in the high byte
    std::uint32_t creator = 0;

    friend bool operator==(const FileCodes&, const FileCodes&) = default;
};

// The files that the user chooses. Main thread only.
class DocumentFiles {
public:
    virtual ~DocumentFiles() = default;

    // Writes a new file, or replaces the old one as a whole: it has its old content if this fails.
    // A link stays one, and a file that is marked as read-only is not replaced. Returns the
    // system's words for what went wrong; empty after success.
    [[nodiscard]] virtual std::string replace(
        std::string_view path, std::span<const std::uint8_t> content)
        = 0;

    // Type and creator codes.
    // False when the file system keeps no such attributes.
    [[nodiscard]] virtual bool setCodes(std::string_view path, FileCodes codes) = 0;
    [[nodiscard]] virtual std::optional<FileCodes> codes(std::string_view path) = 0;
};

} // namespace kestrel
