#pragma once

#include "platform/linux/x11/KeyLedger.h"

#include <optional>

namespace kestrel {

// The XTEST keyboard of an X server, as HeldKeys needs it.
class KeyServer {
public:
    // Queues one key event and returns the sequence number of its request.
    virtual unsigned post(const KeyStep& step) = 0;
    // Writes what is queued.
    virtual void flush() = 0;
    // Waits until the server has handled all our requests. False when the server does not answer.
    [[nodiscard]] virtual bool synchronise() = 0;
    // The keys that are down on the keyboard, other programs' included. Waits for the server. No
    // value when the server cannot tell.
    [[nodiscard]] virtual std::optional<XKeySet> keysDown() = 0;

protected:
    ~KeyServer() = default;
};

} // namespace kestrel
