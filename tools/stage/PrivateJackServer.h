#pragma once

#include "tools/stage/ChildProcess.h"

#include <memory>
#include <string>

namespace kestrel::stage {

// A JACK server of its own name on the dummy driver: no sound hardware, no real-time rights.
class PrivateJackServer {
public:
    static constexpr int FramesPerPeriod = 64;

    // Throws std::runtime_error when the server does not come up within ten seconds.
    PrivateJackServer();
    explicit PrivateJackServer(std::string name);

    void stop(); // freeze it as it is
    void resume();
    void kill();
    void start(); // under the same name

    [[nodiscard]] const std::string& name() const { return m_name; }
    // What a client needs in its environment to find this server.
    [[nodiscard]] ChildProcess::Environment environment() const;

private:
    std::string m_name;
    std::unique_ptr<ChildProcess> m_process;
};

} // namespace kestrel::stage
