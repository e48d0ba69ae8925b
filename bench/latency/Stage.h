#pragma once

#include "bench/latency/AwakeCores.h"
#include "bench/latency/Console.h"
#include "bench/latency/WorkstationWindow.h"
#include "tools/stage/ChildProcess.h"
#include "tools/stage/PrivateJackServer.h"
#include "tools/stage/PrivateXServer.h"
#include "tools/stage/Screen.h"
#include "tools/stage/ThrowAwaySettings.h"

#include <optional>

namespace kestrel::bench {

// Everything around the candidates: the servers, the console, the workstation's window. The process
// itself is named "Pro Tools" from here on.
class Stage {
public:
    // Throws std::runtime_error naming the part that did not come up.
    Stage();

    // Has the utility that runs show its panel, as a person would. Throws std::runtime_error when
    // it does not appear.
    void showPanel();
    // Whether the panel's display has been painted with characters.
    [[nodiscard]] bool panelShowsText() const;

    [[nodiscard]] Console& console() { return m_console; }
    [[nodiscard]] WorkstationWindow& window() { return m_window; }
    [[nodiscard]] const std::string& jackServer() const { return m_jack.name(); }
    [[nodiscard]] const std::string& display() const { return m_x.display(); }
    // What a candidate is started with: the servers, and settings that are thrown away.
    [[nodiscard]] stage::ChildProcess::Environment environment() const;

private:
    [[nodiscard]] std::optional<stage::Area> panelArea() const;

    stage::ThrowAwaySettings m_settings;
    stage::PrivateJackServer m_jack;
    stage::PrivateXServer m_x;
    bool m_hasTray = false;
    WorkstationWindow m_window;
    Console m_console;
    AwakeCores m_awake;
};

} // namespace kestrel::bench
