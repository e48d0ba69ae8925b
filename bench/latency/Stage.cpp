#include "bench/latency/Stage.h"

#include "tools/stage/Patience.h"
#include "tools/stage/StatusIcon.h"

#include <sys/prctl.h>

#include <stdexcept>
#include <utility>

namespace kestrel::bench {

Stage::Stage()
    : m_window(m_x.display())
    , m_console(m_jack.name())
{
    ::prctl(PR_SET_NAME, "Pro Tools");
}

void Stage::showPanel()
{
    constexpr stage::milliseconds Timeout { 10000 };
    if (!std::exchange(m_hasTray, true))
        m_x.startTray();
    const stage::StatusIcon icon(m_x.display(), m_x.environment());
    const auto hasIcon = [&] { return icon.face() != stage::StatusIcon::Face::None; };
    if (!stage::comesTrue(hasIcon, Timeout))
        throw std::runtime_error("the utility has no icon in the tray");
    icon.choosePanel();
    if (!stage::comesTrue([this] { return panelArea().has_value(); }, Timeout))
        throw std::runtime_error("the utility does not show its panel");
}

bool Stage::panelShowsText() const
{
    constexpr stage::Area Display { 288, 9, 401, 44 }; // in pixels, relative to the panel
    constexpr int FewestDots = 500;
    const auto panel = panelArea();
    if (!panel)
        return false;
    const auto isDot = [](stage::Colour colour) { return colour.green > 180; };
    const stage::Area display { panel->x + Display.x, panel->y + Display.y, Display.width,
        Display.height };
    return stage::Screen(m_x.display()).count(display, isDot) > FewestDots;
}

std::optional<stage::Area> Stage::panelArea() const
{
    for (const auto& window : stage::shownWindows(m_x.display(), "kestrel")) {
        if (window.title == "Plug-in Panel")
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
