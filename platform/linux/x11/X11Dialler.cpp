#include "platform/linux/x11/X11Dialler.h"

#include <pthread.h>

#include <cstdlib>
#include <thread>
#include <utility>

namespace kestrel {

namespace {
X11Dialler::Line connectTo(std::string displayName)
{
    pthread_setname_np(pthread_self(), "x11-connect");
    X11Dialler::Line line;
    const char* const name = displayName.empty() ? nullptr : displayName.c_str();
    line.xcb.reset(xcb_connect(name, &line.screenNumber));
    line.displayName = std::move(displayName);
    return line;
}
} // namespace

std::optional<X11Dialler::Line> X11Dialler::dial(std::chrono::milliseconds patience)
{
    const bool isUnderWay = m_attempt.valid();
    if (!isUnderWay) {
        const char* const display = std::getenv("DISPLAY");
        std::promise<Line> promise;
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
