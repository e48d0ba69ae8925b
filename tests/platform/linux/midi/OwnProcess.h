#pragma once

#include <cstddef>

// What the kernel keeps for this process.
namespace kestrel::test::OwnProcess {

[[nodiscard]] std::size_t descriptors();
[[nodiscard]] std::size_t threads();
// Wait until there are no more than that. Joined threads disappear from the kernel's list a little
// later, and JACK closes the semaphore of another client once it is told that the client has gone.
// False if that takes too long.
[[nodiscard]] bool threadsFallTo(std::size_t count);
[[nodiscard]] bool descriptorsFallTo(std::size_t count);

} // namespace kestrel::test::OwnProcess
