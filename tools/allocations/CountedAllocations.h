#pragma once

namespace kestrel {

// How often operator new has been called, in a program that links this library. Any thread.
[[nodiscard]] long allocations();

} // namespace kestrel
