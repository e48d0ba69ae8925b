#pragma once

#include <string>
#include <vector>

namespace kestrel::test {

// What the system grants this process, and what this process has asked of it.
struct Permission {
    bool accessibility = false;
    bool postEvents = false;
    int askings = 0;
    int prompts = 0; // how often the user was shown the system's question
    std::vector<std::u16string> opened; // URLs
};

Permission& permission();

} // namespace kestrel::test
