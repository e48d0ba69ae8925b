#pragma once

#include "tools/stage/ChildProcess.h"

#include <memory>

namespace kestrel::test {

// A session manager that speaks XSMP to its clients, on a thread of its own. One object in a
// process.
class SessionManager {
public:
    // Throws std::runtime_error when it cannot listen.
    SessionManager();
    ~SessionManager();
    SessionManager(const SessionManager&) = delete;
    SessionManager& operator=(const SessionManager&) = delete;

    // The environment in which a program finds it.
    [[nodiscard]] stage::ChildProcess::Environment environment() const;
    // True when a client has registered and has done what a new client does.
    [[nodiscard]] bool hasClient() const;

    // Tells the clients that the session ends. From then on isSaved() tells whether a client has
    // answered that it is ready for that.
    void endSession();
    [[nodiscard]] bool isSaved() const;

private:
    class Protocol; // keeps the macros of the X headers out of this one

    std::unique_ptr<Protocol> m_protocol;
};

} // namespace kestrel::test
