#pragma once

#include "platform/FileAttributes.h"

namespace kestrel {

// Type and creator codes in the extended attribute in which Linux file servers keep what a Mac
// wrote: 32 bytes, the type in the first four and the creator in the next four, both big-endian.
class XattrFileAttributes final : public FileAttributes {
public:
    // The other bytes stay as they are.
    bool setCodes(std::string_view path, FileCodes codes) override;
    std::optional<FileCodes> codes(std::string_view path) override;

    static constexpr const char* AttributeName = "user.com.apple.FinderInfo";
};

} // namespace kestrel
