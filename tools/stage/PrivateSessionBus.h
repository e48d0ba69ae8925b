#pragma once

#include "tools/stage/ChildProcess.h"

#include <string>

namespace kestrel::stage {

// A D-Bus session bus of its own, on which the accessibility bus is started on demand.
class PrivateSessionBus {
public:
    // `environment` is that of the services that the bus starts. Throws std::runtime_error when the
    // bus does not start.
    explicit PrivateSessionBus(const ChildProcess::Environment& environment);

    [[nodiscard]] const std::string& address() const { return m_address; }

private:
    ChildProcess m_daemon;
    std::string m_address;
};

} // namespace kestrel::stage
