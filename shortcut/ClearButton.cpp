#include "shortcut/ClearButton.h"

#include "common/NotificationCenter.h"
#include "shortcut/MyShortcutField.h"

#include <QMouseEvent>

namespace kestrel {

ClearButton::ClearButton(const QRect& frame, const InterfaceServices& services, QWidget* parent)
    : ImageButton(frame, parent)
    , m_notificationCenter(services.notificationCenter)
{
    // Qt emits clicked() when the mouse is released, and only over an enabled button.
    connect(this, &QAbstractButton::clicked, this, &ClearButton::clearField);
}

ClearButton::~ClearButton() = default;

MyShortcutField* ClearButton::myShortcutfield() const
{
    return m_myShortcutfield;
}

void ClearButton::setMyShortcutfield(MyShortcutField* field)
{
    m_myShortcutfield = field;
}

void ClearButton::mouseDown(QMouseEvent& event)
{
    m_notificationCenter.post(NotificationName::hideUserAssignEditBox, this);
    if (isEnabled())
        ImageButton::mousePressEvent(&event);
}

void ClearButton::clearField()
{
    if (!m_myShortcutfield)
        return;
    m_myShortcutfield->clearShortcut();
    m_myShortcutfield->setTitleWithMnemonic({});
    setEnabled(false);
    if (!isHidden())
        m_myShortcutfield->makeFirstResponder();
}

// QWidget::event() drops mouse presses on a disabled button. This button needs them.
bool ClearButton::event(QEvent* event)
{
    const bool isPress
        = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (isPress && !isEnabled()) {
        mousePressEvent(static_cast<QMouseEvent*>(event));
        return true;
    }
    return ImageButton::event(event);
}

void ClearButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        mouseDown(*event);
}

} // namespace kestrel
