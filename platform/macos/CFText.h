#pragma once

#include "platform/macos/CFHolder.h"

#include <optional>
#include <string>
#include <string_view>

// Conversions between UTF-8 and Core Foundation strings.
namespace kestrel::CFText {

// An empty holder when the text is not UTF-8.
[[nodiscard]] CFHolder<CFStringRef> fromUtf8(std::string_view text);

// No value when the string has no UTF-8 form (a lone surrogate).
[[nodiscard]] std::optional<std::string> toUtf8(CFStringRef text);

} // namespace kestrel::CFText
