#include "bench/latency/Stage.h"

#include "tools/stage/Patience.h"
#include "tools/stage/StatusIcon.h"

#include <sys/prctl.h>

#include <algorithm>
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
    const auto isShown = [this] {
        const auto windows = stage::shownWindows(m_x.display(), "kestrel");
        return std::any_of(windows.begin(), windows.end(),
            [](const auto& window) { return window.title == "Plug-in Panel"; });
    };
    if (!stage::comesTrue(isShown, Timeout))
        throw std::runtime_error("the utility does not show its panel");
}

stage::ChildProcess::Environment Stage::environment() const
{
    auto environment = m_settings.environment();
    environment.merge(m_jack.environment());
    environment.merge(m_x.environment());
    return environment;
}

} // namespace kestrel::bench
