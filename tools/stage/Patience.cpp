#include "tools/stage/Patience.h"

#include <thread>

namespace kestrel::stage {

bool comesTrue(const std::function<bool()>& holds, milliseconds timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!holds()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(milliseconds(20));
    }
    return true;
}

} // namespace kestrel::stage
