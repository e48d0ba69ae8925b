#pragma once

#include "tools/stage/ChildProcess.h"

#include <memory>
#include <string>

namespace kestrel::stage {

// A JACK server of its own name on the dummy driver: no sound hardware, no real-time rights. A
// machine has room for eight names, and a killed server keeps its name until another one takes it
// over, so the names are few and used again and again.
class PrivateJackServer {
public:
    static constexpr int FramesPerPeriod = 64;

    // Waits for a name that no other program uses. Throws std::runtime_error when there is none
    // for two minutes, or when the server does not come up within ten seconds.
    PrivateJackServer();
    ~PrivateJackServer();
    PrivateJackServer(const PrivateJackServer&) = delete;
    PrivateJackServer& operator=(const PrivateJackServer&) = delete;

    void stop(); // freeze it as it is
    void resume();
    void kill();
    void start(); // under the same name

    [[nodiscard]] const std::string& name() const { return m_name; }
    // What a client needs in its environment to find this server.
    [[nodiscard]] ChildProcess::Environment environment() const;

private:
    class Name;

    std::unique_ptr<Name> m_nameClaim; // given up after the server has ended
    std::string m_name;
    std::unique_ptr<ChildProcess> m_process;
};

} // namespace kestrel::stage
