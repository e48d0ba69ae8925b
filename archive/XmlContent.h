#pragma once

#include <string_view>

// The content of the elements of XML property lists that are not containers.
namespace kestrel::XmlContent {

inline constexpr std::string_view Blanks = " \t\r\n";

[[nodiscard]] bool isBlank(std::string_view text);

// Throws an ArchiveError unless the content is of the element's kind, and text without references
// to characters that do not exist. Content that libplist would misread is refused too.
void check(std::string_view element, std::string_view content);

// Throws an ArchiveError for malformed XML.
[[noreturn]] void refuse(const char* text);

} // namespace kestrel::XmlContent
