#include "setup/FieldExit.h"

#include <QWidget>

namespace kestrel {

bool FieldExit::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        m_taps.forget();
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)
        return false;
    const auto tapped = m_taps.take(*static_cast<QKeyEvent*>(event));
    if (tapped == ModifierTaps::Tapped::Shift)
        goOn(*static_cast<QWidget*>(watched));
    else if (tapped == ModifierTaps::Tapped::Option)
        m_back();
    return false;
}

void FieldExit::goOn(QWidget& field)
{
    QWidget* next = field.nextInFocusChain();
    while (next != &field
        && (!next->isVisible() || !next->isEnabled() || !(next->focusPolicy() & Qt::TabFocus)
            || next->window() != field.window()))
        next = next->nextInFocusChain();
    next->setFocus(Qt::TabFocusReason);
}

} // namespace kestrel
