#pragma once

#include "tools/stage/ChildProcess.h"

#include <memory>
#include <string>

namespace kestrel::stage {

// A JACK server with its own name on the dummy driver, which needs neither sound hardware nor
// real-time rights. Only one exists at a time in one shared memory, for two reasons: the sockets of
// clients are not named after the server, so clients of the same name disturb each other even on
// different servers; and JACK has room for eight server names, and a killed server keeps its name.
class PrivateJackServer {
public:
    static constexpr int FramesPerPeriod = 64;

    // Asynchronous mode is what people run; there a late cycle loses events or delivers them twice.
    // A synchronous server waits for its clients and delivers each event exactly once.
    enum class Cycles { Independent, WaitForClients };

    // Waits until no other private server exists. Throws std::runtime_error when that takes more
    // than four minutes, or when the server does not come up within ten seconds.
    explicit PrivateJackServer(Cycles cycles = Cycles::Independent);
    ~PrivateJackServer();
    PrivateJackServer(const PrivateJackServer&) = delete;
    PrivateJackServer& operator=(const PrivateJackServer&) = delete;

    void stop(); // returns when the server stands still
    void resume();
    void kill();
    void start(); // under the same name

    [[nodiscard]] const std::string& name() const { return m_name; }
    // The environment variables with which a client finds this server.
    [[nodiscard]] ChildProcess::Environment environment() const;

private:
    class Turn;

    std::unique_ptr<Turn> m_turn; // released after the server has ended
    std::string m_name;
    Cycles m_cycles;
    std::unique_ptr<ChildProcess> m_process;
};

} // namespace kestrel::stage
