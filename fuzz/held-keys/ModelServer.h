#pragma once

#include "platform/linux/x11/KeyLedger.h"

#include <deque>

namespace kestrel::fuzz {

// The XTEST keyboard of an X server with one client of ours: requests wait until the server reads
// them, in order. It may stand still for as long as it likes.
class ModelServer {
public:
    struct Request {
        unsigned number = 0;
        KeyStep step;
    };

    void receive(const Request& request) { m_unread.push_back(request); }
    // Handles up to `count` requests, also in the moment before it stops or a client disconnects.
    void handle(std::size_t count);
    void handleAll() { handle(m_unread.size()); }

    void standStill() { m_standsStill = true; }
    void goOn() { m_standsStill = false; }
    [[nodiscard]] bool standsStill() const { return m_standsStill; }

    // The client has disconnected. The server may drop what it has not read.
    void dropUnread() { m_unread.clear(); }
    // A new server under the same name.
    void restart();

    // Another program uses the XTEST keyboard too.
    void pressForAnother(XKeyCode key);
    void releaseForAnother(XKeyCode key);

    [[nodiscard]] const XKeySet& down() const { return m_down; }
    [[nodiscard]] XKeySet ours() const { return m_down & ~m_foreign; }
    [[nodiscard]] unsigned lastHandled() const { return m_lastHandled; }

private:
    std::deque<Request> m_unread;
    XKeySet m_down;
    XKeySet m_foreign; // keys that only the other program holds
    unsigned m_lastHandled = 0;
    bool m_standsStill = false;
};

} // namespace kestrel::fuzz
