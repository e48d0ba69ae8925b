#pragma once

#include "tools/stage/ChildProcess.h"
#include "tools/stage/OwnProcesses.h"
#include "tools/stage/PrivateJackServer.h"
#include "tools/stage/PrivateSessionBus.h"
#include "tools/stage/PrivateXServer.h"
#include "tools/stage/ShownWindows.h"
#include "tools/stage/ThrowAwaySettings.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace kestrel::stage {

// A whole studio on one machine: the X server, the JACK server, throw-away settings, a process
// table of its own, and the programs that use them: the utility, the console simulator and the
// workstation stand-in.
class Studio {
public:
    struct Options {
        bool tray = true;
        std::string screen = PrivateXServer::Options().screen; // of a private display
        bool useSessionDisplay = false; // the DISPLAY of the environment instead of a private one
        bool useSessionJack = false; // the JACK server of the environment instead
        bool sessionBus = false; // a private D-Bus session bus; without it the programs have none
        // A server that waits for its clients stands still for ten seconds when one is killed.
        PrivateJackServer::Cycles cycles = PrivateJackServer::Cycles::WaitForClients;
    };

    // `programs` is the folder of the built programs.
    explicit Studio(std::filesystem::path programs);
    Studio(std::filesystem::path programs, const Options& options);

    // Runs "kestrelctl assign" with these arguments, e.g. { "6", "⌘S" }, to store a shortcut.
    // Throws std::runtime_error when it refuses them.
    void assign(const std::vector<std::string>& arguments) const;

    [[nodiscard]] std::unique_ptr<ChildProcess> start(const std::string& program,
        const std::vector<std::string>& arguments = {},
        const ChildProcess::Environment& added = {}) const;

    // Writes a picture of the screen, or of one window, as a PNG. False when that fails.
    [[nodiscard]] bool photograph(const std::filesystem::path& picture) const;
    [[nodiscard]] bool photograph(
        const std::filesystem::path& picture, const ShownWindow& window) const;

    [[nodiscard]] ChildProcess::Environment environment() const;
    [[nodiscard]] std::string displayName() const;
    [[nodiscard]] std::filesystem::path configFolder() const { return m_settings.configFolder(); }
    [[nodiscard]] const std::filesystem::path& home() const { return m_settings.home(); }
    // Only valid in a studio with servers of its own.
    [[nodiscard]] PrivateXServer& display() { return *m_display; }
    [[nodiscard]] PrivateJackServer& jack() { return *m_jack; }
    [[nodiscard]] const PrivateSessionBus& sessionBus() const { return *m_sessionBus; }

private:
    [[nodiscard]] bool photograph(
        const std::string& window, const std::filesystem::path& picture) const;

    std::filesystem::path m_programs;
    ThrowAwaySettings m_settings;
    OwnProcesses m_processes;
    std::unique_ptr<PrivateXServer> m_display;
    std::unique_ptr<PrivateJackServer> m_jack;
    std::unique_ptr<PrivateSessionBus> m_sessionBus;
};

} // namespace kestrel::stage
