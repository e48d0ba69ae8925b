// The part of the setup window that handles the twelve buttons: the selected one and the rename
// boxes.

#include "setup/UserAssinableWindowController.h"

namespace kestrel {

void UserAssinableWindowController::mouseDown()
{
    hideUserAssignEditBox();
}

void UserAssinableWindowController::hideUserAssignEditBoxNotify(const Notification&)
{
    hideUserAssignEditBox();
}

void UserAssinableWindowController::hideUserAssignEditBox()
{
    for (const auto& controller : m_userAssignableButtons) {
        controller->view()->setNeedsDisplay();
        controller->view()->closeEditBox();
    }
}

UserAssignableButton* UserAssinableWindowController::button(int index) const
{
    return m_userAssignableButtons[static_cast<std::size_t>(index)]->view();
}

UserAssignableButton* UserAssinableWindowController::currentButton() const
{
    const int key = m_userAssignableButtons.front()->currentButtonId();
    return key >= 0 && key < UserAssignFile::ButtonCount ? button(key) : nullptr;
}

ButtonEntry UserAssinableWindowController::currentEntry() const
{
    if (m_userAssignableButtons.empty())
        return nullptr;
    return m_workingSet.entry(m_userAssignableButtons.front()->currentButtonId() + 1);
}

} // namespace kestrel
