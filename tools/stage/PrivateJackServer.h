#pragma once

#include "tools/stage/ChildProcess.h"

#include <memory>
#include <string>

namespace kestrel::stage {

// A JACK server of its own name on the dummy driver: no sound hardware, no real-time rights. There
// is one at a time on a machine. Clients of the same name disturb each other even on different
// servers, as their sockets are named without the server; and there is room for eight servers'
// names, of which a killed server keeps its own until another one takes it over.
class PrivateJackServer {
public:
    static constexpr int FramesPerPeriod = 64;

    // Independent cycles are what people run: one that comes too late loses events or passes them
    // twice. A server that waits for its clients passes each exactly once, however slow they are.
    enum class Cycles { Independent, WaitForClients };

    // Waits until no other program has one. Throws std::runtime_error when that takes more than
    // four minutes, or when the server does not come up within ten seconds.
    explicit PrivateJackServer(Cycles cycles = Cycles::Independent);
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
    class Turn;

    std::unique_ptr<Turn> m_turn; // given up after the server has ended
    std::string m_name;
    Cycles m_cycles;
    std::unique_ptr<ChildProcess> m_process;
};

} // namespace kestrel::stage
