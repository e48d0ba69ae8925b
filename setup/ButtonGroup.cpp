#include "setup/ButtonGroup.h"

#include "setup/UserAssignableButtonController.h"

namespace kestrel {

ButtonGroup& ButtonGroup::sharedInstance()
{
    static ButtonGroup group;
    return group;
}

void ButtonGroup::addButtonController(UserAssignableButtonController* controller)
{
    m_buttonControllers.push_back(controller);
}

void ButtonGroup::removeButtonController(UserAssignableButtonController* controller)
{
    std::erase(m_buttonControllers, controller);
}

void ButtonGroup::setCurrentButtonId(std::int32_t id)
{
    using State = UserAssignableButton::State;
    m_currentButtonId = id; // set first: the button that turns on must find itself selected
    for (const UserAssignableButtonController* controller : m_buttonControllers) {
        if (UserAssignableButton* button = controller->view())
            button->setState(button->tag() == id ? State::On : State::Off);
    }
}

} // namespace kestrel
