#pragma once

#include <string>

struct _jack_client;

namespace kestrel {

// Calls of JACK that start threads, so that a list of threads shows what each one does. JACK offers
// no other way to tell its threads apart. Control thread.

// Null when there is no server or the server refuses. Starts no server.
[[nodiscard]] _jack_client* openWithNamedThreads(const std::string& clientName);
[[nodiscard]] bool activateWithNamedThreads(_jack_client* client);

} // namespace kestrel
