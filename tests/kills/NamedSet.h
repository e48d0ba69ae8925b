#pragma once

#include "assign/UserAssignFile.h"

#include <filesystem>
#include <optional>
#include <string>

namespace kestrel::test {

// Assignment sets that carry one name in all their keys, so that a mixture of two sets shows. Key 1
// of each types A, key 2 Command+S, and so on. The sets differ in size.
namespace NamedSet {

enum class Size { Small, Large };

void write(const std::filesystem::path& file, const std::string& name, Size size);

// The name of the set. No value when the set is not whole.
[[nodiscard]] std::optional<std::string> nameOf(const UserAssignFile& set);
// No value either when the file cannot be read.
[[nodiscard]] std::optional<std::string> nameIn(const std::filesystem::path& file);

} // namespace NamedSet

} // namespace kestrel::test
