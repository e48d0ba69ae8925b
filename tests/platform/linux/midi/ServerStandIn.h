#pragma once

#include <cstdint>
#include <vector>

// Stands for a port of JACK in tests of the lanes, which link no JACK library. The functions of
// JACK that the lanes call are defined over it.
struct _jack_port {
    using Event = std::vector<unsigned char>;

    std::vector<Event> events; // of this cycle
    std::uint32_t lostEvents = 0; // that did not fit into the buffer of this cycle
};
