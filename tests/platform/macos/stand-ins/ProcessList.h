#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace kestrel::test {

// The kernel's process table: whole records with the given command names.
struct ProcessList {
    std::vector<std::byte> records;
    std::size_t room = 0; // bytes by which the kernel's first answer exceeds the table

    void add(std::string_view commandName);
};

ProcessList& processList();

} // namespace kestrel::test
