#include "setup/UserAssignableButtonController.h"

#include "setup/ButtonGroup.h"

namespace kestrel {

UserAssignableButtonController::UserAssignableButtonController(
    const QRect& frame, const InterfaceServices& services, QWidget* parent)
    : m_view(new UserAssignableButton(frame, services, parent))
{
    m_view->setDelegate(this);
    ButtonGroup::sharedInstance().addButtonController(this);
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

void UserAssignableButtonController::mouseDown()
{
    setCurrentButtonId(m_view->tag());
}

} // namespace kestrel
