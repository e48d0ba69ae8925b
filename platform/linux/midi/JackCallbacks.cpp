#include "platform/linux/midi/JackCallbacks.h"

#include "platform/linux/midi/Uncancelled.h"

#include <jack/jack.h>

namespace kestrel {

namespace {
// Calls `function` on the notification thread with what JACK passes as `self`.
template <typename Function> void notify(void* self, Function function)
{
    cancelOnlyAtCancellationPoints();
    uncancelled([self, function] { function(*static_cast<JackCallbacks*>(self)); });
}

void setPortCallbacks(jack_client_t* client, JackCallbacks& callbacks)
{
    jack_set_port_registration_callback(
        client,
        [](jack_port_id_t identifier, int registered, void* self) {
            notify(self, [=](JackCallbacks& to) {
                if (registered != 0)
                    to.portRegistered(identifier);
                else
                    to.portUnregistered(identifier);
            });
        },
        &callbacks);
    jack_set_port_rename_callback(
        client,
        [](jack_port_id_t identifier, const char*, const char*, void* self) {
            notify(self, [=](JackCallbacks& to) {
                to.portUnregistered(identifier);
                to.portRegistered(identifier);
            });
        },
        &callbacks);
}

void setGraphCallbacks(jack_client_t* client, JackCallbacks& callbacks)
{
    jack_set_port_connect_callback(
        client,
        [](jack_port_id_t one, jack_port_id_t other, int connected, void* self) {
            notify(self, [=](JackCallbacks& to) {
                if (connected == 0)
                    to.connectionRemoved(one, other);
            });
        },
        &callbacks);
    jack_set_graph_order_callback(
        client,
        [](void* self) {
            notify(self, [](JackCallbacks& to) { to.graphChanged(); });
            return 0;
        },
        &callbacks);
}
} // namespace

void setCallbacks(jack_client_t* client, JackCallbacks& callbacks)
{
    jack_set_process_callback(
        client,
        [](jack_nframes_t frames, void* self) {
            uncancelled([=] { static_cast<JackCallbacks*>(self)->process(frames); });
            return 0;
        },
        &callbacks);
    jack_on_shutdown(
        client,
        [](void* self) { uncancelled([=] { static_cast<JackCallbacks*>(self)->shutDown(); }); },
        &callbacks);
    setPortCallbacks(client, callbacks);
    setGraphCallbacks(client, callbacks);
}

} // namespace kestrel
