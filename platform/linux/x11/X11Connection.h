#pragma once

#include "platform/MainLoop.h"
#include "platform/linux/x11/X11Connector.h"

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

// Our own connection to the X server, separate from Qt's. It may be absent or break at any time. A
// broken connection is closed, and the next ensureOpen() tries to open it again. Main thread only.
class X11Connection {
public:
    // Listeners are called in the order in which they were added. Each of them gets events of all
    // kinds.
    class Listener {
    public:
        // Also called when a server that had stopped answering goes on: what it did with the
        // requests of that time is unknown.
        virtual void connectionOpened() = 0;
        virtual void connectionLost() = 0;
        virtual void eventArrived(const xcb_generic_event_t& event) = 0;

    protected:
        ~Listener() = default;
    };

    static constexpr std::chrono::milliseconds Patience { 500 };

    // `patience` is the longest wait for an answer of the server.
    explicit X11Connection(MainLoop& mainLoop, std::chrono::milliseconds patience = Patience);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    void add(Listener& listener);
    void remove(Listener& listener);

    // True when there is a connection and the server keeps up with our requests. Without a
    // connection, tries to make one, at most once a second, and waits for it as long as the
    // patience.
    bool ensureOpen();
    // Like ensureOpen(), but makes no connection and hands out no events.
    [[nodiscard]] bool keepsUp();
    // Reads the events that have arrived and hands them to the listeners. Does not wait.
    void takeIn();
    // Writes the queued requests. Hands out no events: the main loop later delivers those that were
    // read during the writing.
    void flush();

    // Selects property, structure and focus events of a window. Calls are counted: the events end
    // when stopListeningTo() has been called as often as listenTo().
    void listenTo(xcb_window_t window);
    void stopListeningTo(xcb_window_t window);

    // xcb() and screen() are valid only while the connection is open.
    [[nodiscard]] xcb_connection_t* xcb() const { return m_xcb; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *m_screen; }
    [[nodiscard]] bool isOpen() const { return m_xcb != nullptr; }
    [[nodiscard]] bool isUsable() const { return isOpen() && !m_stallProbe; }
    [[nodiscard]] const std::string& displayName() const { return m_displayName; }

    // Waits for the reply, as long as the patience at most. Null after an error, a timeout or a
    // lost connection. Every wait for a reply goes through this function.
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
    const std::chrono::milliseconds m_patience;
    X11Connector m_connector;
    std::vector<Listener*> m_listeners;
    xcb_connection_t* m_xcb = nullptr;
    const xcb_screen_t* m_screen = nullptr;
    std::string m_displayName;
    std::unique_ptr<MainLoop::Watch> m_watch;
    std::map<xcb_window_t, int> m_listenedTo; // how often listenTo() was called
    std::deque<Event> m_arrived; // events read while waiting for a reply or writing
    std::chrono::steady_clock::time_point m_lastAttempt;
    std::uint64_t m_roundTrips = 0;
    std::uint64_t m_readByServer = 0; // bytes that the server is known to have read
    // Set while the server stands still: the number of the request whose reply ends the stall.
    // Meanwhile no requests are sent, because writing would block as soon as the backlog is full.
    std::optional<unsigned> m_stallProbe;
    bool m_dispatching = false;
    std::shared_ptr<const bool> m_alive = std::make_shared<bool>(true);
};

} // namespace kestrel
