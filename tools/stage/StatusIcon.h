#pragma once

#include "tools/stage/ChildProcess.h"
#include "tools/stage/ShownWindows.h"

#include <optional>
#include <string>

namespace kestrel::stage {

// Looks at the utility's icon in the tray and works its menu, as a person would. Every function
// throws std::runtime_error when the display does not answer.
class StatusIcon {
public:
    // `environment` tells child processes the display.
    StatusIcon(std::string display, ChildProcess::Environment environment);

    enum class Face { None, Offline, Online };
    [[nodiscard]] Face face() const;

    // Clicks the icon and then the first entry of its menu, which shows the plug-in panel. Throws
    // when there is no icon or no menu appears.
    void choosePanel() const;
    // Clicks the icon. Returns where the menu is on the screen.
    [[nodiscard]] Area openMenu() const;
    void waitUntilMenuIsGone() const;
    // Clicks the icon and presses the entry's mnemonic. The window that gets the focus after the
    // menu may see the release of that key.
    void choose(char mnemonic) const;

private:
    [[nodiscard]] std::optional<ShownWindow> icon() const;
    [[nodiscard]] std::optional<ShownWindow> menu() const;
    void click(int x, int y) const;
    void xdotool(std::vector<std::string> arguments) const;

    std::string m_display;
    ChildProcess::Environment m_environment;
};

} // namespace kestrel::stage
