#pragma once

#include <stdexcept>

namespace kestrel::bench {

// Lets the user end a run so that everything that was started is stopped in order.
class Interruption : public std::runtime_error {
public:
    Interruption();

    // From now on SIGINT and SIGTERM are noted and thrown by the next check.
    static void listen();
    static void check();
};

} // namespace kestrel::bench
