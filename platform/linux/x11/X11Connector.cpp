#include "platform/linux/x11/X11Connector.h"

#include <pthread.h>

#include <cstdlib>
#include <thread>
#include <utility>

namespace kestrel {

namespace {
X11Connector::Connected connectTo(std::string displayName)
{
    pthread_setname_np(pthread_self(), "x11-connect");
    X11Connector::Connected connected;
    const char* const name = displayName.empty() ? nullptr : displayName.c_str();
    connected.xcb.reset(xcb_connect(name, &connected.screenNumber));
    connected.displayName = std::move(displayName);
    return connected;
}
} // namespace

std::optional<X11Connector::Connected> X11Connector::connect(std::chrono::milliseconds patience)
{
    const bool isUnderWay = m_attempt.valid();
    if (!isUnderWay) {
        const char* const display = std::getenv("DISPLAY");
        std::promise<Connected> promise;
        m_attempt = promise.get_future();
        // If the caller stops waiting, the detached thread ends by itself, and the destruction of
        // its unused result closes the connection.
        std::thread([promise = std::move(promise),
                        name = std::string(display ? display : "")]() mutable {
            promise.set_value(connectTo(std::move(name)));
        }).detach();
    }
    const auto wait = isUnderWay ? std::chrono::milliseconds(0) : patience;
    if (m_attempt.wait_for(wait) != std::future_status::ready)
        return {};
    return m_attempt.get();
}

} // namespace kestrel
