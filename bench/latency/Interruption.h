#pragma once

#include <stdexcept>

namespace kestrel::bench {

// Thrown when the user ends a run, so that the destructors stop everything that was started.
class Interruption : public std::runtime_error {
public:
    Interruption();

    // From now on SIGINT and SIGTERM make the next check() throw.
    static void listen();
    static void check();
};

} // namespace kestrel::bench
