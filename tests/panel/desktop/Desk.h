#pragma once

#include "tests/platform/linux/x11/KeyReceiver.h"
#include "tools/stage/PrivateXServer.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace kestrel::test {

// A private desktop with a window manager, a workstation that has the focus, and the panel.
class Desk : public testing::Test {
protected:
    static constexpr stage::milliseconds Timeout { 10000 };

    struct Content {
        int width, height;
        int panelX, panelY, panelWidth, panelHeight;

        friend bool operator==(const Content&, const Content&) = default;
    };
    struct Place {
        int x, y, width, height; // place of the content on the screen

        friend bool operator==(const Place&, const Place&) = default;
        friend void PrintTo(const Place& place, std::ostream* out)
        {
            *out << place.width << "x" << place.height << " at " << place.x << "," << place.y;
        }
    };

    explicit Desk(const stage::PrivateXServer::Options& options = {});

    void startPanel(const std::vector<std::string>& arguments = {});
    void showPanel(); // waits until the window manager has placed the panel
    [[nodiscard]] Content content(); // the present content of the panel
    [[nodiscard]] std::optional<Content> waitForContent(
        const std::function<bool(const Content&)>& wanted);
    [[nodiscard]] Place panelPlace();
    [[nodiscard]] Place framePlace(); // includes the decoration of the window manager
    // Ends the panel and returns the frame that it has stored.
    [[nodiscard]] std::string quitPanel();

    void pointer(std::initializer_list<std::string> xdotool);
    void drag(int fromX, int fromY, int toX, int toY);
    // Returns when the window manager has handled all earlier requests and events.
    void settle();
    void closePanel(); // like a click on its close button
    [[nodiscard]] Place waitForPlace(const std::function<bool(const Place&)>& wanted);
    // Presses A and returns the keys that the workstation receives: none without the focus.
    [[nodiscard]] std::string keysThatReachTheWorkstation();
    [[nodiscard]] bool workstationIsActive();

    // Throws if the condition does not hold within ten seconds.
    static void waitUntil(const char* what, const std::function<bool()>& holds);

    stage::PrivateXServer server;
    KeyReceiver workstation { server.display(), "Pro Tools" };
    std::unique_ptr<stage::ChildProcess> panel;
    xcb_window_t panelWindow = XCB_WINDOW_NONE;

private:
    xcb_window_t m_probe = XCB_WINDOW_NONE;
};

} // namespace kestrel::test
