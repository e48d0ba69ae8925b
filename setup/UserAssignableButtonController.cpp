#include "setup/UserAssignableButtonController.h"

#include "common/NotificationCenter.h"
#include "setup/ButtonGroup.h"

namespace kestrel {

UserAssignableButtonController::UserAssignableButtonController(
    const QRect& frame, const InterfaceServices& services, QWidget* parent)
    : m_view(new UserAssignableButton(frame, services, parent))
{
    m_view->setDelegate(this);
    ButtonGroup::sharedInstance().addButtonController(this);
    // The keyboard, assistive technology and the program only turn the button on, so select it
    // here.
    QObject::connect(m_view, &QAbstractButton::toggled, m_view,
        [this, &center = services.notificationCenter](bool isOn) {
            if (isOn)
                select(center);
        });
}

UserAssignableButtonController::~UserAssignableButtonController()
{
    ButtonGroup::sharedInstance().removeButtonController(this);
    delete m_view.data();
}

std::int32_t UserAssignableButtonController::currentButtonId() const
{
    return ButtonGroup::sharedInstance().currentButtonId();
}

void UserAssignableButtonController::setCurrentButtonId(std::int32_t id)
{
    ButtonGroup::sharedInstance().setCurrentButtonId(id);
}

void UserAssignableButtonController::select(NotificationCenter& notificationCenter)
{
    if (currentButtonId() == m_view->tag())
        return;
    setCurrentButtonId(m_view->tag());
    notificationCenter.post(NotificationName::refreshShortcutName, m_view);
}

void UserAssignableButtonController::mouseDown()
{
    setCurrentButtonId(m_view->tag());
}

} // namespace kestrel
