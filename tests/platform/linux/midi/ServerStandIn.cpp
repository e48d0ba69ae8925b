#include "tests/platform/linux/midi/ServerStandIn.h"

#include <jack/jack.h>
#include <jack/midiport.h>

#include <cerrno>

namespace {
_jack_port& portOf(void* buffer)
{
    return *static_cast<_jack_port*>(buffer);
}
} // namespace

void* jack_port_get_buffer(jack_port_t* port, jack_nframes_t)
{
    return port;
}

void jack_midi_clear_buffer(void* buffer)
{
    portOf(buffer).events.clear();
}

uint32_t jack_midi_get_event_count(void* buffer)
{
    return static_cast<uint32_t>(portOf(buffer).events.size());
}

uint32_t jack_midi_get_lost_event_count(void* buffer)
{
    return portOf(buffer).lostEvents;
}

int jack_midi_event_get(jack_midi_event_t* event, void* buffer, uint32_t index)
{
    auto& events = portOf(buffer).events;
    if (index >= events.size())
        return ENODATA;
    *event = { .time = 0, .size = events[index].size(), .buffer = events[index].data() };
    return 0;
}

size_t jack_midi_max_event_size(void*)
{
    return 1000;
}

jack_midi_data_t* jack_midi_event_reserve(void* buffer, jack_nframes_t, size_t size)
{
    return portOf(buffer).events.emplace_back(size).data();
}

jack_nframes_t jack_last_frame_time(const jack_client_t*)
{
    return 0;
}

jack_time_t jack_frames_to_time(const jack_client_t*, jack_nframes_t frames)
{
    return frames;
}
