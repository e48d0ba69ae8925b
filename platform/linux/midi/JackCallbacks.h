#pragma once

#include <cstdint>

struct _jack_client;

namespace kestrel {

// What JACK calls for one client. Closing the client cannot cut a call short.
class JackCallbacks {
public:
    // JACK's process thread, once in each cycle.
    virtual void process(std::uint32_t frames) = 0;
    // JACK's notification thread. A renamed port is unregistered and registered again. JACK does
    // not say which of two ports is the output.
    virtual void portRegistered(std::uint32_t identifier) = 0;
    virtual void portUnregistered(std::uint32_t identifier) = 0;
    virtual void connectionRemoved(std::uint32_t one, std::uint32_t other) = 0;
    virtual void graphChanged() = 0;
    // Either thread: the server has ended.
    virtual void shutDown() = 0;

protected:
    ~JackCallbacks() = default;
};

// Called before the client is activated. The callbacks must live until it is closed.
void setCallbacks(_jack_client* client, JackCallbacks& callbacks);

} // namespace kestrel
