#include "bench/latency/Stage.h"

#include "tools/stage/Patience.h"

#include <sys/prctl.h>

#include <stdexcept>
#include <utility>

namespace kestrel::bench {

namespace {
constexpr stage::milliseconds Timeout { 10000 };
constexpr std::string_view PanelTitle = "Plug-in Panel";
constexpr std::string_view ActivityTitle = "Activity";
} // namespace

Stage::Stage()
    : m_window(m_x.display())
    , m_console(m_jack.name())
{
    ::prctl(PR_SET_NAME, "Pro Tools");
}

stage::StatusIcon Stage::statusIcon()
{
    if (!std::exchange(m_hasTray, true))
        m_x.startTray();
    stage::StatusIcon icon(m_x.display(), m_x.environment());
    const auto hasIcon = [&] { return icon.face() != stage::StatusIcon::Face::None; };
    if (!stage::comesTrue(hasIcon, Timeout))
        throw std::runtime_error("the utility has no icon in the tray");
    return icon;
}

void Stage::showPanel()
{
    statusIcon().choosePanel();
    if (!stage::comesTrue([this] { return areaOf(PanelTitle).has_value(); }, Timeout))
        throw std::runtime_error("the utility does not show its panel");
}

void Stage::showActivity()
{
    constexpr char Mnemonic = 'v';
    statusIcon().choose(Mnemonic);
    if (!stage::comesTrue([this] { return areaOf(ActivityTitle).has_value(); }, Timeout))
        throw std::runtime_error("the utility does not show what happens");
    m_window.comeToFront();
}

bool Stage::panelShowsText() const
{
    constexpr stage::Area Display { 288, 9, 401, 44 }; // in pixels, relative to the panel
    constexpr int FewestDots = 500;
    const auto panel = areaOf(PanelTitle);
    if (!panel)
        return false;
    const auto isDot = [](stage::Colour colour) { return colour.green > 180; };
    const stage::Area display { panel->x + Display.x, panel->y + Display.y, Display.width,
        Display.height };
    return stage::Screen(m_x.display()).count(display, isDot) > FewestDots;
}

std::optional<stage::Area> Stage::areaOf(std::string_view title) const
{
    for (const auto& window : stage::shownWindows(m_x.display(), "kestrel")) {
        if (window.title == title)
            return window.area;
    }
    return {};
}

stage::ChildProcess::Environment Stage::environment() const
{
    auto environment = m_settings.environment();
    environment.merge(m_jack.environment());
    environment.merge(m_x.environment());
    return environment;
}

} // namespace kestrel::bench
