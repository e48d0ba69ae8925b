#include "platform/linux/midi/NamedThreads.h"

#include <jack/jack.h>
#include <pthread.h>

#include <array>

namespace kestrel {

namespace {
// Gives `name` to the threads that JACK starts while this object exists. A new thread inherits the
// name of the thread that starts it.
class NewThreadsAreNamed {
public:
    explicit NewThreadsAreNamed(const char* name)
    {
        pthread_getname_np(pthread_self(), m_before.data(), m_before.size());
        pthread_setname_np(pthread_self(), name);
    }
    ~NewThreadsAreNamed() { pthread_setname_np(pthread_self(), m_before.data()); }
    NewThreadsAreNamed(const NewThreadsAreNamed&) = delete;
    NewThreadsAreNamed& operator=(const NewThreadsAreNamed&) = delete;

private:
    std::array<char, 16> m_before {}; // the size of the longest name that Linux keeps
};
} // namespace

jack_client_t* openWithNamedThreads(const std::string& clientName)
{
    const NewThreadsAreNamed named("jack-notify");
    return jack_client_open(clientName.c_str(), JackNoStartServer, nullptr);
}

bool activateWithNamedThreads(jack_client_t* client)
{
    const NewThreadsAreNamed named("jack-process");
    return jack_activate(client) == 0;
}

} // namespace kestrel
