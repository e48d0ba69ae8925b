// The reference program that a user would script. It has the same JACK input as floor-keys and
// starts one xdotool per event. It waits for each xdotool, so that the order holds.

#include <jack/jack.h>
#include <jack/midiport.h>
#include <jack/ringbuffer.h>
#include <semaphore.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

constexpr std::array<const char*, 12> Keys { "a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k",
    "l" };
constexpr uint8_t Heartbeat = 0xFF; // stands for a heartbeat among the button codes
constexpr std::size_t RingSize = 8192;

struct Link {
    jack_port_t* input = nullptr;
    jack_port_t* answer = nullptr;
    bool armed = false; // the first packet of a press or release has come
    // Carries codes from the process callback to the thread. `filled` counts them.
    jack_ringbuffer_t* ring = jack_ringbuffer_create(RingSize);
    sem_t filled {};
    std::atomic<int> answersDue { 0 };
};

void put(Link& link, uint8_t code)
{
    if (jack_ringbuffer_write(link.ring, reinterpret_cast<char*>(&code), 1) == 1)
        sem_post(&link.filled);
}

void read(Link& link, const jack_midi_event_t& event)
{
    const jack_midi_data_t* bytes = event.buffer;
    if (event.size < 3)
        return;
    if (bytes[0] == 0x90 && bytes[1] == 0 && bytes[2] == 0) {
        put(link, Heartbeat);
    } else if (bytes[0] == 0xB0 && bytes[1] == 0x0F && bytes[2] == 0x40) {
        link.armed = event.size < 5;
        if (!link.armed)
            put(link, bytes[4]);
    } else if (bytes[0] == 0xB0 && bytes[1] == 0x2F && link.armed) {
        link.armed = false;
        put(link, bytes[2]);
    }
}

int process(jack_nframes_t frames, void* context)
{
    auto& link = *static_cast<Link*>(context);
    void* input = jack_port_get_buffer(link.input, frames);
    void* answer = jack_port_get_buffer(link.answer, frames);
    jack_midi_clear_buffer(answer);
    for (int due = link.answersDue.exchange(0); due > 0; --due) {
        const std::array<jack_midi_data_t, 3> bytes { 0x90, 0x00, 0x7F };
        jack_midi_event_write(answer, 0, bytes.data(), bytes.size());
    }
    const auto count = jack_midi_get_event_count(input);
    for (uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event;
        if (jack_midi_event_get(&event, input, i) == 0)
            read(link, event);
    }
    return 0;
}

void spawn(uint8_t code)
{
    const std::size_t button = code & 0x3F;
    if (button >= Keys.size())
        return;
    std::array<char*, 4> command { const_cast<char*>("xdotool"),
        const_cast<char*>(code & 0x40 ? "keydown" : "keyup"), const_cast<char*>(Keys[button]),
        nullptr };
    pid_t child = 0;
    if (posix_spawnp(&child, command[0], nullptr, nullptr, command.data(), environ) == 0)
        waitpid(child, nullptr, 0);
}

[[noreturn]] void run(Link& link)
{
    for (;;) {
        if (sem_wait(&link.filled) != 0)
            continue;
        uint8_t code = 0;
        jack_ringbuffer_read(link.ring, reinterpret_cast<char*>(&code), 1);
        if (code == Heartbeat)
            ++link.answersDue;
        else
            spawn(code);
    }
}

} // namespace

int main()
{
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);

    static Link link;
    sem_init(&link.filled, 0, 0);
    jack_client_t* client = jack_client_open("reference", JackNoStartServer, nullptr);
    if (!client) {
        std::fprintf(stderr, "spawn-keys: no JACK server\n");
        return 1;
    }
    link.input = jack_port_register(client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    link.answer = jack_port_register(client, "answer", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    std::thread([] { run(link); }).detach();
    jack_set_process_callback(client, process, &link);
    if (!link.input || !link.answer || jack_activate(client) != 0)
        return 1;
    std::printf("ready %s\n", jack_get_client_name(client));
    std::fflush(stdout);
    int number = 0;
    sigwait(&ends, &number);
    jack_client_close(client);
    std::_Exit(0);
}
