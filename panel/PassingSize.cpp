#include "panel/PassingSize.h"

#include <QWidget>

#include <utility>

namespace kestrel {

PassingSize::PassingSize(QWidget& view, const Clock& clock)
    : m_view(view)
    , m_clock(clock)
{
    m_wait.setSingleShot(true);
    QObject::connect(&m_wait, &QTimer::timeout, &view, [this] { rest(); });
}

void PassingSize::sizeChanged()
{
    const auto now = m_clock.now();
    m_isPassing = now < m_rests;
    m_isUnpainted = true;
    m_rests = now + Rest;
    m_wait.start(Rest);
}

// The user sees a size only when it is painted, and a slow painting is no rest. Later paintings of
// the same size do not put off its rest.
void PassingSize::painted()
{
    if (std::exchange(m_isUnpainted, false))
        m_rests = m_clock.now() + Rest;
}

bool PassingSize::isPassing() const
{
    return m_isPassing && m_clock.now() < m_rests;
}

void PassingSize::rest()
{
    if (isPassing())
        m_wait.start(std::chrono::ceil<std::chrono::milliseconds>(m_rests - m_clock.now()));
    else if (std::exchange(m_isPassing, false))
        m_view.update();
}

} // namespace kestrel
