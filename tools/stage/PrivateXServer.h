#pragma once

#include "tools/stage/ChildProcess.h"

#include <memory>
#include <string>

namespace kestrel::stage {

// A virtual X server (Xvfb), on demand with a window manager and a tray.
class PrivateXServer {
public:
    struct Options {
        std::string screen = "1280x800x24";
        bool windowManager = true;
        bool tray = false;
        std::string without {}; // the name of an extension to switch off
    };

    // Throws std::runtime_error when a part does not come up within ten seconds.
    PrivateXServer();
    explicit PrivateXServer(const Options& options);

    void startTray();
    void stop(); // returns when the server stands still
    void resume();
    void kill();

    [[nodiscard]] const std::string& display() const { return m_display; }
    [[nodiscard]] ChildProcess::Environment environment() const;

private:
    void startServer(const Options& options);
    void startWindowManager();

    std::string m_display;
    std::unique_ptr<ChildProcess> m_server;
    std::unique_ptr<ChildProcess> m_windowManager;
    std::unique_ptr<ChildProcess> m_tray;
};

} // namespace kestrel::stage
