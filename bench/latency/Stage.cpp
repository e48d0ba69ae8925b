#include "bench/latency/Stage.h"

#include <sys/prctl.h>

namespace kestrel::bench {

Stage::Stage()
    : m_window(m_x.display())
    , m_console(m_jack.name())
{
    ::prctl(PR_SET_NAME, "Pro Tools");
}

stage::ChildProcess::Environment Stage::environment() const
{
    auto environment = m_settings.environment();
    environment.merge(m_jack.environment());
    environment.merge(m_x.environment());
    return environment;
}

} // namespace kestrel::bench
