#pragma once

#include "tools/demo/Performance.h"
#include "tools/stage/StatusIcon.h"

#include <optional>

namespace kestrel {

// Checks what the plug-in panel and the status icon show of the console.
class PanelAct {
public:
    // `approved` is the folder of the pictures that the panel must match.
    PanelAct(Performance& performance, std::filesystem::path approved);

    void seeOnline();
    void openFromTray();
    void mirrorEditing();
    void fallSilent();
    void comeBack();

private:
    [[nodiscard]] std::optional<stage::ShownWindow> panel() const;
    // Checks that the panel shows the approved picture of that name, pixel for pixel.
    [[nodiscard]] bool panelShows(const std::string& name) const;
    void seeIcon(const std::string& what, stage::StatusIcon::Face face);

    Performance& m_performance;
    std::filesystem::path m_approved;
    stage::StatusIcon m_icon;
};

} // namespace kestrel
