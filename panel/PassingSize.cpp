#include "panel/PassingSize.h"

#include <QWidget>

#include <utility>

namespace kestrel {

PassingSize::PassingSize(QWidget& view)
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(Rest);
    QObject::connect(&m_rest, &QTimer::timeout, &view, [this, &view] {
        if (std::exchange(m_isPassing, false))
            view.update();
    });
}

void PassingSize::sizeChanged()
{
    m_isPassing = m_rest.isActive();
    m_rest.start();
}

} // namespace kestrel
