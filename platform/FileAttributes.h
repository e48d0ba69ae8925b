#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace kestrel {

struct FileCodes {
    std::uint32_t type = 0; // four-character codes, first character in the high byte
    std::uint32_t creator = 0;

    friend bool operator==(const FileCodes&, const FileCodes&) = default;
};

// Type and creator codes of files.
class FileAttributes {
public:
    virtual ~FileAttributes() = default;

    // False when the file system keeps no such attributes.
    [[nodiscard]] virtual bool setCodes(std::string_view path, FileCodes codes) = 0;
    [[nodiscard]] virtual std::optional<FileCodes> codes(std::string_view path) = 0;
};

} // namespace kestrel
