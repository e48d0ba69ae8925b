#pragma once

#include "platform/DocumentFiles.h"

namespace kestrel {

// Replaces files as the system offers it to programs: it gives a folder of its own for the new
// file, so that the program needs no access to the folder of the old one, about which macOS would
// ask the user. Type and creator codes are in the file's Finder information.
class FoundationDocumentFiles final : public DocumentFiles {
public:
    std::string replace(std::string_view path, std::span<const std::uint8_t> content) override;
    bool setCodes(std::string_view path, FileCodes codes) override;
    std::optional<FileCodes> codes(std::string_view path) override;
};

} // namespace kestrel
