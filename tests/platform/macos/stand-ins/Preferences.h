#pragma once

#include "platform/macos/CFHolder.h"

#include <map>
#include <string>

namespace kestrel::test {

// The user defaults: what this process has set, and what is on disk.
struct Preferences {
    // By application and key. A null value has been removed.
    using Values = std::map<std::pair<std::u16string, std::u16string>, CFHolder<CFTypeRef>>;

    Values pending;
    Values onDisk;
};

Preferences& preferences();

} // namespace kestrel::test
