#pragma once

#include "platform/DocumentFiles.h"

namespace kestrel {

// Writes through AtomicFile. Type and creator codes are in the extended attribute that Linux file
// servers use for a Mac's Finder information: 32 bytes, the type in bytes 0 to 3 and the creator in
// bytes 4 to 7, big-endian.
class XattrDocumentFiles final : public DocumentFiles {
public:
    std::string replace(std::string_view path, std::span<const std::uint8_t> content) override;
    // Leaves the other bytes of the attribute unchanged.
    bool setCodes(std::string_view path, FileCodes codes) override;
    std::optional<FileCodes> codes(std::string_view path) override;

    static constexpr const char* AttributeName = "user.com.apple.FinderInfo";
};

} // namespace kestrel
