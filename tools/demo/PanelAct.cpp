#include "tools/demo/PanelAct.h"

#include <iostream>

namespace kestrel {

namespace {
using stage::StatusIcon;
} // namespace

PanelAct::PanelAct(Performance& performance, std::filesystem::path approved)
    : m_performance(performance)
    , m_approved(std::move(approved))
    , m_icon(performance.studio.displayName(), performance.studio.environment())
{
}

void PanelAct::seeOnline()
{
    seeIcon("the icon in the tray is online", StatusIcon::Face::Online);
}

void PanelAct::openFromTray()
{
    std::cout << "choosing \"Plug-in Panel\" from the menu in the tray\n";
    m_icon.choosePanel();
    m_performance.checkSoon("the panel is shown", [this] { return panel().has_value(); });
    m_performance.check("press 6 still arrives as ⌘S: the panel has not taken the focus",
        m_performance.keysAfter("press 6") == "down Super_L; down S Command; up Super_L Command");
    m_performance.check(
        "release 6 arrives as S up", m_performance.keysAfter("release 6") == "up S");
}

void PanelAct::mirrorEditing()
{
    std::cout << "the console shows an equaliser being edited\n";
    m_performance.console->writeLine("show");
    m_performance.check("the scene ends",
        m_performance.console
            ->waitForLine(
                [](std::string_view line) { return line == "shown"; }, Performance::LinkTimeout)
            .has_value());
    m_performance.checkSoon("the panel mirrors the second page of the equaliser, to the pixel",
        [this] { return panelShows("equaliser"); });
    m_performance.photograph("panel");
}

void PanelAct::fallSilent()
{
    std::cout << "the console falls silent …\n";
    m_performance.console->writeLine("heartbeat off");
    seeIcon("the icon in the tray is offline", StatusIcon::Face::Offline);
    m_performance.checkSoon("the panel is cleared", [this] { return panelShows("silent"); });
    m_performance.photograph("silent");
}

void PanelAct::comeBack()
{
    std::cout << "the console beats again\n";
    m_performance.console->writeLine("heartbeat on");
    seeIcon("the icon in the tray is online again", StatusIcon::Face::Online);
}

std::optional<stage::ShownWindow> PanelAct::panel() const
{
    for (const auto& window : stage::shownWindows(m_performance.studio.displayName(), "kestrel")) {
        if (window.title == "Plug-in Panel")
            return window;
    }
    return {};
}

bool PanelAct::panelShows(const std::string& name) const
{
    const auto shown = panel();
    const auto picture = m_performance.studio.home() / "panel.png";
    if (!shown || !m_performance.studio.photograph(picture, *shown))
        return false;
    // Processors may round a blended channel differently by one.
    stage::ChildProcess compare(
        { "sh", "-c", "exec compare -metric AE -fuzz 0.5% \"$0\" \"$1\" null: 2>/dev/null",
            (m_approved / (name + "@1x.png")).string(), picture.string() });
    return compare.wait(Performance::StartTimeout) == 0;
}

void PanelAct::seeIcon(const std::string& what, StatusIcon::Face face)
{
    m_performance.checkSoon(
        what, [this, face] { return m_icon.face() == face; }, Performance::LinkTimeout);
}

} // namespace kestrel
