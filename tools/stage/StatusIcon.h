#pragma once

#include "tools/stage/ChildProcess.h"
#include "tools/stage/ShownWindows.h"

#include <optional>
#include <string>

namespace kestrel::stage {

// The utility's icon in the tray of a display, and the menu behind it, as a person sees and works
// them. Everything throws std::runtime_error when the display does not answer.
class StatusIcon {
public:
    // `environment` names the display to programs that are started.
    StatusIcon(std::string display, ChildProcess::Environment environment);

    enum class Face { None, Offline, Online };
    [[nodiscard]] Face face() const;

    // Clicks the icon and then the first entry of its menu, which shows the plug-in panel; throws
    // when there is no icon or no menu comes up.
    void choosePanel() const;
    // Clicks the icon and then presses the entry's mnemonic. Whoever has the keyboard once the menu
    // is gone may see that key come up.
    void choose(char mnemonic) const;

private:
    [[nodiscard]] std::optional<ShownWindow> icon() const;
    [[nodiscard]] std::optional<ShownWindow> menu() const;
    [[nodiscard]] Area openMenu() const;
    void waitUntilMenuIsGone() const;
    void click(int x, int y) const;
    void xdotool(std::vector<std::string> arguments) const;

    std::string m_display;
    ChildProcess::Environment m_environment;
};

} // namespace kestrel::stage
