#pragma once

#include "platform/FileAttributes.h"

namespace kestrel {

// Type and creator codes in a file's Finder information.
class FinderFileAttributes final : public FileAttributes {
public:
    bool setCodes(std::string_view path, FileCodes codes) override;
    std::optional<FileCodes> codes(std::string_view path) override;
};

} // namespace kestrel
