#include "platform/linux/x11/X11Connection.h"

#include "platform/linux/x11/XkbProtocol.h"

#include <linux/sockios.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <xcb/xcbext.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <csignal>

namespace kestrel {

namespace {
using Clock = std::chrono::steady_clock;
constexpr auto ReconnectInterval = std::chrono::seconds(1);

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; screens.rem > 0 && number > 0; --number)
        xcb_screen_next(&screens);
    return screens.rem > 0 ? screens.data : nullptr;
}

// The most bytes that may wait in the kernel for the server to read. Writing blocks from about 50
// KiB on, and the difference must suffice for the request that ends a stall.
constexpr int MaxBacklogBytes = 40 * 1024;
// Fewer bytes than this cannot become a backlog, even though the kernel also counts its own
// bookkeeping of each write, about 20 times the size of a key event.
constexpr std::uint64_t HarmlessBytes = 2048;

int unreadBytes(int descriptor)
{
    int bytes = 0;
    return ::ioctl(descriptor, SIOCOUTQ, &bytes) == 0 ? bytes : 0;
}

// Ignores SIGPIPE, so that writing to a server that has gone returns an error and does not end the
// process.
void surviveBrokenPipes()
{
    struct sigaction action { };
    if (::sigaction(SIGPIPE, nullptr, &action) == 0 && action.sa_handler == SIG_DFL)
        ::signal(SIGPIPE, SIG_IGN);
}
} // namespace

X11Connection::X11Connection(MainLoop& mainLoop, std::chrono::milliseconds patience)
    : m_mainLoop(mainLoop)
    , m_patience(patience)
    , m_lastAttempt(Clock::now() - ReconnectInterval)
{
    surviveBrokenPipes();
}

X11Connection::~X11Connection()
{
    m_watch.reset();
    if (m_xcb)
        xcb_disconnect(m_xcb);
}

void X11Connection::add(Listener& listener)
{
    m_listeners.push_back(&listener);
    if (isUsable())
        listener.connectionOpened();
}

void X11Connection::remove(Listener& listener)
{
    std::erase(m_listeners, &listener);
}

bool X11Connection::ensureOpen()
{
    if (isOpen() && xcb_connection_has_error(m_xcb) != 0)
        close();
    if (m_stallProbe)
        takeIn();
    if (isOpen())
        return keepsUp();
    const auto now = Clock::now();
    if (now - m_lastAttempt < ReconnectInterval)
        return false;
    m_lastAttempt = now;
    return open();
}

bool X11Connection::keepsUp()
{
    if (isUsable() && !catchesUp())
        beginStall();
    return isUsable();
}

bool X11Connection::open()
{
    auto connected = m_connector.connect(m_patience);
    if (!connected || xcb_connection_has_error(connected->xcb.get()) != 0)
        return false;
    m_screen = screenOf(connected->xcb.get(), connected->screenNumber);
    if (!m_screen)
        return false;
    m_xcb = connected->xcb.release();
    m_readByServer = 0;
    m_displayName = std::move(connected->displayName);
    m_watch = m_mainLoop.watch(
        xcb_get_file_descriptor(m_xcb), [this, alive = std::weak_ptr(m_alive), connection = m_xcb] {
            if (alive.lock() && m_xcb == connection)
                takeIn();
        });
    learnExtensions();
    if (isUsable())
        tellOpened();
    flush();
    return isUsable();
}

// Fetches what libxcb must know about our extensions. libxcb would otherwise ask the server at
// their first use and wait for the answer without a limit.
void X11Connection::learnExtensions()
{
    for (xcb_extension_t* const extension : { &xcb_test_id, &xcb_xkb_id, &xcb_input_id })
        xcb_prefetch_extension_data(m_xcb, extension);
    (void)reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(m_xcb).sequence);
}

void X11Connection::tellOpened()
{
    for (Listener* listener : std::vector(m_listeners))
        listener->connectionOpened();
}

void X11Connection::close()
{
    // The watch's callback may be the caller of close(), so the main loop destroys the watch and
    // the connection later, when that callback has returned.
    struct Remains {
        std::unique_ptr<MainLoop::Watch> watch;
        xcb_connection_t* xcb;
        ~Remains()
        {
            watch.reset();
            xcb_disconnect(xcb);
        }
    };
    const std::shared_ptr<Remains> remains(new Remains { std::move(m_watch), m_xcb });
    m_mainLoop.perform([remains] {});
    m_xcb = nullptr;
    m_screen = nullptr;
    m_stallProbe.reset();
    m_arrived.clear();
    m_listenedTo.clear();
    for (Listener* listener : std::vector(m_listeners))
        listener->connectionLost();
}

void X11Connection::listenTo(xcb_window_t window)
{
    if (!isOpen() || m_listenedTo[window]++ > 0)
        return;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY
        | XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(m_xcb, window, XCB_CW_EVENT_MASK, &mask);
}

void X11Connection::stopListeningTo(xcb_window_t window)
{
    const auto found = m_listenedTo.find(window);
    if (found == m_listenedTo.end() || --found->second > 0)
        return;
    m_listenedTo.erase(found);
    const std::uint32_t none = XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(m_xcb, window, XCB_CW_EVENT_MASK, &none);
}

void X11Connection::flush()
{
    if (isUsable())
        xcb_flush(m_xcb);
    if (!isOpen() || m_dispatching)
        return; // the takeIn() that is running hands out what has been read
    // xcb_flush() may also read events. The descriptor does not become readable for those, so they
    // are queued here.
    while (auto* event = xcb_poll_for_queued_event(m_xcb))
        m_arrived.push_back({ event, &std::free });
    if (!m_arrived.empty())
        takeInLater();
    if (xcb_connection_has_error(m_xcb) != 0)
        close();
}

void X11Connection::takeInLater()
{
    m_mainLoop.perform([this, alive = std::weak_ptr(m_alive)] {
        if (alive.lock())
            takeIn();
    });
}

void X11Connection::takeIn()
{
    if (m_dispatching || !isOpen())
        return;
    m_dispatching = true;
    do {
        while (const Event event = nextEvent()) {
            for (Listener* listener : m_listeners)
                listener->eventArrived(*event);
            if (isUsable())
                xcb_flush(m_xcb);
        }
    } while (endStallIfAnswered());
    m_dispatching = false;
    if (xcb_connection_has_error(m_xcb) != 0)
        close();
}

X11Connection::Event X11Connection::nextEvent()
{
    if (!m_arrived.empty()) {
        Event event = std::move(m_arrived.front());
        m_arrived.pop_front();
        return event;
    }
    return { xcb_poll_for_event(m_xcb), &std::free };
}

void* X11Connection::waitForReply(unsigned sequence)
{
    if (!isOpen())
        return nullptr;
    if (m_stallProbe) {
        xcb_discard_reply(m_xcb, sequence);
        return nullptr;
    }
    ++m_roundTrips;
    xcb_flush(m_xcb);
    void* reply = nullptr;
    const auto deadline = Clock::now() + m_patience;
    while (!takeReply(sequence, reply)) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd readable { xcb_get_file_descriptor(m_xcb), POLLIN, 0 };
        if (left.count() <= 0 || ::poll(&readable, 1, static_cast<int>(left.count())) == 0) {
            xcb_discard_reply(m_xcb, sequence);
            beginStall();
            break;
        }
    }
    if (!m_arrived.empty() && !m_dispatching)
        takeInLater();
    return reply;
}

// True when the reply has arrived or can no longer arrive. Events that arrive before it are kept
// for later.
bool X11Connection::takeReply(unsigned sequence, void*& reply)
{
    xcb_generic_error_t* error = nullptr;
    bool answered = xcb_poll_for_reply(m_xcb, sequence, &reply, &error) != 0;
    while (auto* event = xcb_poll_for_event(m_xcb))
        m_arrived.push_back({ event, &std::free });
    if (!answered)
        answered = xcb_poll_for_reply(m_xcb, sequence, &reply, &error) != 0;
    std::free(error);
    return answered;
}

// Waits while the server works through a burst of requests. False when the server stands still.
bool X11Connection::catchesUp()
{
    const std::uint64_t written = xcb_total_written(m_xcb);
    if (written - m_readByServer <= HarmlessBytes)
        return true;
    const int descriptor = xcb_get_file_descriptor(m_xcb);
    const auto deadline = Clock::now() + m_patience;
    int unread = unreadBytes(descriptor);
    for (; unread > MaxBacklogBytes; unread = unreadBytes(descriptor)) {
        if (Clock::now() >= deadline)
            return false;
        ::poll(nullptr, 0, 1);
    }
    if (unread == 0)
        m_readByServer = written;
    return true;
}

void X11Connection::beginStall()
{
    m_stallProbe = xcb_get_input_focus(m_xcb).sequence;
    xcb_flush(m_xcb);
}

bool X11Connection::endStallIfAnswered()
{
    void* reply = nullptr;
    if (!m_stallProbe || !takeReply(*m_stallProbe, reply))
        return false;
    std::free(reply);
    m_stallProbe.reset();
    if (xcb_connection_has_error(m_xcb) != 0)
        return false;
    tellOpened();
    return true;
}

} // namespace kestrel
