#pragma once

#import <Foundation/Foundation.h>

#include <string_view>

namespace kestrel::FoundationText {

// Nil when the text is not UTF-8.
[[nodiscard]] inline NSString* fromUtf8(std::string_view text)
{
    return [[NSString alloc] initWithBytes:text.data()
                                    length:text.size()
                                  encoding:NSUTF8StringEncoding];
}

} // namespace kestrel::FoundationText
