#pragma once

#include "platform/FileAttributes.h"

namespace kestrel {

// Type and creator codes in the extended attribute that holds them when such a file is copied
// from macOS, on file systems that keep extended attributes.
class XattrFileAttributes final : public FileAttributes {
public:
    [[nodiscard]] bool setCodes(std::string_view path, FileCodes codes) override;
    [[nodiscard]] std::optional<FileCodes> codes(std::string_view path) override;
};

} // namespace kestrel
