#pragma once

#include "tools/demo/Performance.h"
#include "tools/stage/StatusIcon.h"

#include <optional>

namespace kestrel {

// What the plug-in panel and the icon in the tray show of the console.
class PanelAct {
public:
    // `approved` holds the pictures that the panel must match.
    PanelAct(Performance& performance, std::filesystem::path approved);

    void seeOnline();
    void openFromTray();
    void mirrorEditing();
    void fallSilent();
    void comeBack();

private:
    [[nodiscard]] std::optional<stage::ShownWindow> panel() const;
    // The panel shows the approved picture of that name, to the pixel.
    [[nodiscard]] bool panelShows(const std::string& name) const;
    void seeIcon(const std::string& what, stage::StatusIcon::Face face);

    Performance& m_performance;
    std::filesystem::path m_approved;
    stage::StatusIcon m_icon;
};

} // namespace kestrel
