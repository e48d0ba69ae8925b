#pragma once

#include "platform/MainLoop.h"
#include "platform/linux/x11/X11Dialler.h"

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrel {

template <typename T> using XReply = std::unique_ptr<T, decltype(&std::free)>;

// Our own connection to the X server, apart from the toolkit's. It may be absent or break at any
// time: then it is closed, and whoever asks next tries to open it again. Main thread only.
class X11Connection {
public:
    // Listeners are told in the order in which they were added, of events of all kinds.
    class Listener {
    public:
        // Also when a server that had stopped answering has gone on: what was asked of it
        // meanwhile is unknown.
        virtual void connectionOpened() = 0;
        virtual void connectionLost() = 0;
        virtual void eventArrived(const xcb_generic_event_t& event) = 0;

    protected:
        ~Listener() = default;
    };

    explicit X11Connection(MainLoop& mainLoop);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    void add(Listener& listener);
    void remove(Listener& listener);

    // True when there is a connection and the server keeps up with it. Tries to make one, but not
    // more often than once a second, and waits for that half a second at the most.
    bool ensureOpen();
    // The same, of the connection that there is: tries to make none, and hands out no event.
    [[nodiscard]] bool keepsUp();
    // Hands the events that have arrived to the listeners; reads, but does not wait.
    void takeIn();
    // Writes what has been asked for. Hands out no event: what the writing has read comes later,
    // from the main loop.
    void flush();

    // Property, structure and focus events of somebody's window, as long as anybody wants them.
    void listenTo(xcb_window_t window);
    void stopListeningTo(xcb_window_t window);

    // Only while open.
    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *m_screen; }
    [[nodiscard]] bool isOpen() const { return m_xcb != nullptr; }
    [[nodiscard]] bool isUsable() const { return isOpen() && !m_stallProbe; }
    [[nodiscard]] const std::string& displayName() const { return m_displayName; }

    // Waits for the reply, half a second at the most; null for an error, a timeout or a lost
    // connection. Every wait of ours for the server goes through here.
    template <typename T> [[nodiscard]] XReply<T> reply(unsigned sequence)
    {
        return { static_cast<T*>(waitForReply(sequence)), &std::free };
    }
    [[nodiscard]] std::uint64_t roundTrips() const { return m_roundTrips; }

private:
    using Event = XReply<xcb_generic_event_t>;

    bool open();
    void learnExtensions();
    void close();
    void takeInLater();
    [[nodiscard]] Event nextEvent();
    [[nodiscard]] void* waitForReply(unsigned sequence);
    bool takeReply(unsigned sequence, void*& reply);
    [[nodiscard]] bool catchesUp();
    void beginStall();
    bool endStallIfAnswered();
    void tellOpened();

    MainLoop& m_mainLoop;
    X11Dialler m_dialler;
    std::vector<Listener*> m_listeners;
    xcb_connection_t* m_xcb = nullptr;
    const xcb_screen_t* m_screen = nullptr;
    std::string m_displayName;
    std::unique_ptr<MainLoop::Watch> m_watch;
    std::map<xcb_window_t, int> m_listenedTo; // how many want it
    std::deque<Event> m_arrived; // while a reply was waited for, or something written
    std::chrono::steady_clock::time_point m_lastAttempt;
    std::uint64_t m_roundTrips = 0;
    std::uint64_t m_readByServer = 0; // bytes that the server is known to have read
    // The server stands still until this request is answered. Nothing is asked of it meanwhile:
    // writing to it would block as soon as its backlog is full.
    std::optional<unsigned> m_stallProbe;
    bool m_dispatching = false;
    std::shared_ptr<const bool> m_alive = std::make_shared<bool>(true);
};

} // namespace kestrel
