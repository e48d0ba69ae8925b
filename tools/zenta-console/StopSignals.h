#pragma once

namespace kestrel::console {

// A descriptor that becomes readable when SIGINT or SIGTERM has arrived, which no longer end the
// program then. Throws std::system_error when there is none.
[[nodiscard]] int stopSignals();

} // namespace kestrel::console
