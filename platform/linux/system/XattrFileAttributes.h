#pragma once

#include "platform/FileAttributes.h"

namespace kestrel {

// Type and creator codes in the extended attribute that Linux file servers use for a Mac's Finder
// information: 32 bytes, the type in bytes 0 to 3 and the creator in bytes 4 to 7, big-endian.
class XattrFileAttributes final : public FileAttributes {
public:
    // Leaves the other bytes of the attribute unchanged.
    bool setCodes(std::string_view path, FileCodes codes) override;
    std::optional<FileCodes> codes(std::string_view path) override;

    static constexpr const char* AttributeName = "user.com.apple.FinderInfo";
};

} // namespace kestrel
