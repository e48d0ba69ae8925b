// The reference program that every other program is compared with. It does the least that a program
// can do between the console and the keyboard: one process callback, one semaphore, one thread, one
// fake key, one flush. It knows twelve buttons with fixed keys, and its thread answers heartbeats.
//
//   --watch-front   post only while a window of class "Pro Tools" is in front; the
//                   connection that posts keeps this current from property notifications
//   --ask-front     post under the same condition, but ask the X server before each key
//   --delay-us N    spin for N µs before each key, to prove that the bench measures the delay

#include <jack/jack.h>
#include <jack/midiport.h>
#include <semaphore.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <thread>

namespace {

enum class Front { Ignored, Watched, Asked };

// X keycodes of the keys A to L. The first one belongs to button 1.
constexpr std::array<uint8_t, 12> Keys { 38, 56, 54, 40, 26, 41, 42, 43, 31, 44, 45, 46 };
constexpr uint8_t Heartbeat = 0xFF; // stands for a heartbeat among the button codes

template <typename T> using Reply = std::unique_ptr<T, decltype(&std::free)>;

struct Link {
    jack_port_t* input = nullptr;
    jack_port_t* answer = nullptr;
    bool armed = false; // the first packet of a press or release has come
    // A ring of codes from the process callback to the thread. The semaphore counts them and orders
    // the memory accesses. A place is used again 4,096 codes later.
    std::array<uint8_t, 4096> codes {};
    std::size_t written = 0; // process callback only
    sem_t filled {};
    std::atomic<int> answersDue { 0 };
};

void put(Link& link, uint8_t code)
{
    link.codes[link.written++ % link.codes.size()] = code;
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
    void* answer = jack_port_get_buffer(link.answer, frames);
    jack_midi_clear_buffer(answer);
    if (link.answersDue.load(std::memory_order_relaxed) > 0) {
        for (int due = link.answersDue.exchange(0); due > 0; --due) {
            const std::array<jack_midi_data_t, 3> bytes { 0x90, 0x00, 0x7F };
            jack_midi_event_write(answer, 0, bytes.data(), bytes.size());
        }
    }
    void* input = jack_port_get_buffer(link.input, frames);
    const auto count = jack_midi_get_event_count(input);
    for (uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event;
        if (jack_midi_event_get(&event, input, i) == 0)
            read(link, event);
    }
    return 0;
}

[[noreturn]] void fail(const char* reason)
{
    std::fprintf(stderr, "floor-keys: %s\n", reason);
    std::_Exit(1);
}

class Keyboard {
public:
    explicit Keyboard(Front front)
        : m_front(front)
        , m_connection(xcb_connect(nullptr, nullptr))
    {
        if (xcb_connection_has_error(m_connection))
            fail("no X server");
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        constexpr std::string_view Name = "_NET_ACTIVE_WINDOW";
        const Reply<xcb_intern_atom_reply_t> atom(
            xcb_intern_atom_reply(
                m_connection, xcb_intern_atom(m_connection, 0, Name.size(), Name.data()), nullptr),
            &std::free);
        m_activeWindow = atom ? atom->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
        if (m_front == Front::Watched) {
            const uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
            xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &mask);
            m_workstationInFront = askFront();
        }
        // libxcb asks the server about an extension at its first use, so this is done before the
        // first key.
        static_cast<void>(xcb_get_extension_data(m_connection, &xcb_test_id));
    }

    void post(uint8_t code)
    {
        const std::size_t button = code & 0x3F;
        if (button >= Keys.size() || !mayPost())
            return;
        xcb_test_fake_input(m_connection, code & 0x40 ? XCB_KEY_PRESS : XCB_KEY_RELEASE,
            Keys[button], XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        xcb_flush(m_connection);
    }

private:
    bool mayPost()
    {
        if (m_front == Front::Watched)
            takeInEvents();
        else if (m_front == Front::Asked)
            m_workstationInFront = askFront();
        return m_front == Front::Ignored || m_workstationInFront;
    }

    void takeInEvents()
    {
        while (auto* event = xcb_poll_for_event(m_connection)) {
            const auto* change = reinterpret_cast<xcb_property_notify_event_t*>(event);
            if ((event->response_type & 0x7F) == XCB_PROPERTY_NOTIFY
                && change->atom == m_activeWindow)
                m_workstationInFront = askFront();
            std::free(event);
        }
        if (xcb_connection_has_error(m_connection))
            fail("the X server has gone");
    }

    bool askFront()
    {
        const auto active = property(m_root, m_activeWindow, XCB_ATOM_WINDOW);
        if (!active || xcb_get_property_value_length(active.get()) != 4)
            return false;
        xcb_window_t window = XCB_WINDOW_NONE;
        std::memcpy(&window, xcb_get_property_value(active.get()), sizeof window);
        const auto names = property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
        if (!names)
            return false;
        const std::string_view text(static_cast<char*>(xcb_get_property_value(names.get())),
            static_cast<std::size_t>(xcb_get_property_value_length(names.get())));
        const auto classAt = text.find('\0') + 1; // the text is: instance, zero, class, zero
        return text.substr(classAt, text.find('\0', classAt) - classAt) == "Pro Tools";
    }

    Reply<xcb_get_property_reply_t> property(xcb_window_t window, xcb_atom_t name, xcb_atom_t type)
    {
        return { xcb_get_property_reply(m_connection,
                     xcb_get_property(m_connection, 0, window, name, type, 0, 64), nullptr),
            &std::free };
    }

    Front m_front;
    xcb_connection_t* m_connection;
    xcb_window_t m_root = XCB_WINDOW_NONE;
    xcb_atom_t m_activeWindow = XCB_ATOM_NONE;
    bool m_workstationInFront = false;
};

[[noreturn]] void run(Link& link, Keyboard& keyboard, std::chrono::microseconds delay)
{
    for (std::size_t next = 0;;) {
        if (sem_wait(&link.filled) != 0)
            continue;
        const uint8_t code = link.codes[next++ % link.codes.size()];
        if (code == Heartbeat) {
            ++link.answersDue;
            continue;
        }
        if (delay.count() > 0) {
            const auto due = std::chrono::steady_clock::now() + delay;
            while (std::chrono::steady_clock::now() < due) { }
        }
        keyboard.post(code);
    }
}

} // namespace

int main(int count, char** arguments)
{
    Front front = Front::Ignored;
    std::chrono::microseconds delay { 0 };
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--watch-front")
            front = Front::Watched;
        else if (argument == "--ask-front")
            front = Front::Asked;
        else if (argument == "--delay-us" && i + 1 < count)
            delay = std::chrono::microseconds(std::atol(arguments[++i]));
    }
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGTERM);
    sigaddset(&ends, SIGINT);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);

    static Link link;
    sem_init(&link.filled, 0, 0);
    jack_client_t* client = jack_client_open("reference", JackNoStartServer, nullptr);
    if (!client)
        fail("no JACK server");
    link.input = jack_port_register(client, "in", JACK_DEFAULT_MIDI_TYPE, JackPortIsInput, 0);
    link.answer = jack_port_register(client, "answer", JACK_DEFAULT_MIDI_TYPE, JackPortIsOutput, 0);
    static Keyboard keyboard(front);
    std::thread([delay] { run(link, keyboard, delay); }).detach();
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
