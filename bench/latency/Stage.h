#pragma once

#include "bench/latency/AwakeCores.h"
#include "bench/latency/Console.h"
#include "bench/latency/WorkstationWindow.h"
#include "tools/stage/ChildProcess.h"
#include "tools/stage/PrivateJackServer.h"
#include "tools/stage/PrivateXServer.h"
#include "tools/stage/Screen.h"
#include "tools/stage/StatusIcon.h"
#include "tools/stage/ThrowAwaySettings.h"

#include <optional>

namespace kestrel::bench {

// Everything around the candidates: the X server, the JACK server, the console and the
// workstation's window. The constructor names this process "Pro Tools", so that the utility takes
// it for the workstation.
class Stage {
public:
    // Throws std::runtime_error that names the part that did not start.
    Stage();

    // Opens the panel of the running utility from its icon in the tray, as a person would. Throws
    // std::runtime_error when the panel does not appear.
    void showPanel();
    // Opens the utility's window of events and puts the workstation's window in front again. Throws
    // std::runtime_error when that fails.
    void showActivity();
    // True when the panel's display shows characters.
    [[nodiscard]] bool panelShowsText() const;

    [[nodiscard]] Console& console() { return m_console; }
    [[nodiscard]] WorkstationWindow& window() { return m_window; }
    [[nodiscard]] const std::string& jackServer() const { return m_jack.name(); }
    [[nodiscard]] const std::string& display() const { return m_x.display(); }
    // The environment for a candidate. It names the servers and the throw-away settings.
    [[nodiscard]] stage::ChildProcess::Environment environment() const;

private:
    [[nodiscard]] stage::StatusIcon statusIcon();
    [[nodiscard]] std::optional<stage::Area> areaOf(std::string_view title) const;

    stage::ThrowAwaySettings m_settings;
    stage::PrivateJackServer m_jack;
    stage::PrivateXServer m_x;
    bool m_hasTray = false;
    WorkstationWindow m_window;
    Console m_console;
    AwakeCores m_awake;
};

} // namespace kestrel::bench
