#pragma once

#include "fuzz/held-keys/ModelServer.h"
#include "platform/linux/x11/HeldKeys.h"

#include <optional>
#include <vector>

namespace kestrel::fuzz {

// One run of the program: what XTestKeyEvents and X11Connection do with HeldKeys, against the model
// of a server.
class ModelProgram final : private KeyServer {
public:
    // `firstRequest` is the number of the first request of each connection.
    ModelProgram(ModelServer& server, std::string journalPath, unsigned firstRequest);

    // A kill is the end of the object alone.
    void end();

    void connect();
    // The connection breaks, and the program notices.
    void loseConnection();

    void press(XKeyCode key, const std::vector<XKeyCode>& modifiers, KeyEvents::AutoRepeat);
    void pressBare(XKeyCode key);
    void release(XKeyCode key);
    void releaseAll();
    // `modifiers` are among `keys`.
    void setUserKeys(const XKeySet& keys, const XKeySet& modifiers);

    // The server sends an event. It carries the number of the request that was handled last.
    void sendEvent() { m_events.push_back(m_server.lastHandled()); }
    // Takes in what the server has sent, the answer that ends a stall included.
    void takeIn();

private:
    unsigned post(const KeyStep& step) override;
    void flush() override;
    bool synchronise() override;
    std::optional<XKeySet> keysDown() override;

    [[nodiscard]] bool isUsable() const { return m_isConnected && !m_isStalled; }
    void opened();

    ModelServer& m_server;
    const std::string m_journalPath;
    const unsigned m_firstRequest;
    unsigned m_nextRequest = 0;
    std::vector<ModelServer::Request> m_unwritten;
    std::vector<unsigned> m_events;
    XKeySet m_userKeys;
    XKeySet m_userModifiers;
    XKeySet m_foreign;
    bool m_isConnected = false;
    bool m_isStalled = false;
    HeldKeys m_held { *this };
};

} // namespace kestrel::fuzz
