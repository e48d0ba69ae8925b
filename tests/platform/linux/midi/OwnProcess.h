#pragma once

#include <cstddef>

// What the kernel keeps for this process.
namespace kestrel::test::OwnProcess {

[[nodiscard]] std::size_t descriptors();
[[nodiscard]] std::size_t threads();
// Waits until there are no more threads than that, because joined ones disappear from the kernel's
// list a little later. False if that takes too long.
[[nodiscard]] bool threadsFallTo(std::size_t count);

} // namespace kestrel::test::OwnProcess
