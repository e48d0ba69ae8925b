// The part of the setup window that fills the four fields and enables Assign.

#include "setup/SetupTables.h"
#include "setup/UserAssinableWindowController.h"
#include "shortcut/ClearButton.h"

namespace kestrel {

namespace {

constexpr int FieldCount = SetupTables::FieldCount;

std::int64_t offsetOf(int field)
{
    return static_cast<std::int64_t>(shortcutRecordOffset(static_cast<std::size_t>(field)));
}

} // namespace

void UserAssinableWindowController::userAssign(const Notification&)
{
    refreshShortcutText();
    setFocusShortcutText();
}

void UserAssinableWindowController::updateAssignButton()
{
    m_unassigned.edited(m_userAssignableButtons.front()->currentButtonId());
    enabledAssignButton();
}

void UserAssinableWindowController::refreshShortcutText()
{
    m_unassigned.leave();
    if (const ButtonEntry entry = currentEntry()) {
        for (int index = 0; index < FieldCount; ++index)
            getMyShortcutField(index)->setUserAssignParam(offsetOf(index), entry);
    }
    enabledAssignButton();
    hiddenShortcutText();
}

void UserAssinableWindowController::setFocusShortcutText()
{
    if (!m_userAssignableButtons.empty())
        getMyShortcutField(0)->makeFirstResponder();
}

void UserAssinableWindowController::enabledAssignButton()
{
    const ButtonEntry entry = currentEntry();
    bool isChanged = false;
    for (int index = 0; index < FieldCount && entry && !isChanged; ++index)
        isChanged = getMyShortcutField(index)->compareUserAssignParam(offsetOf(index), entry);
    assignButton()->setEnabled(isChanged);
    if (!m_userAssignableButtons.empty())
        m_unassigned.setWaiting(isChanged, m_userAssignableButtons.front()->currentButtonId());
    hiddenShortcutText();
    refreshMarks();
}

// Shows the first field and all fields up to the one after the last filled field. Hides the rest.
void UserAssinableWindowController::hiddenShortcutText()
{
    const auto isFilled
        = [this](int index) { return getMyShortcutField(index)->isEntryShortcut(); };
    int lastFilled = FieldCount - 1;
    while (lastFilled >= 0 && !isFilled(lastFilled))
        --lastFilled;
    bool hadFocus = false;
    for (int index = 0; index < FieldCount; ++index) {
        MyShortcutField* field = getMyShortcutField(index);
        const bool isShown = index == 0 || index <= lastFilled + 1;
        if (!isShown) {
            field->setTitleWithMnemonic(field->getInputCharacters());
            if (field->isFirstResponder()) {
                hadFocus = true;
                MyShortcutField::makeWindowFirstResponder(*m_window);
            }
        }
        field->setHidden(!isShown);
        field->myClearButton()->setHidden(!isShown);
    }
    refreshNotAvailableTitle();
    if (hadFocus)
        setFocusShortcutText();
    refreshScene();
}

void UserAssinableWindowController::refreshNotAvailableTitle()
{
    for (const auto& controller : m_shortcutFields) {
        if (controller->view()->isFncKey())
            return;
    }
    for (const auto& controller : m_shortcutFields) {
        MyShortcutField* field = controller->view();
        if (field->bNotAvailable()) {
            field->setTitleWithMnemonic({});
            field->setBNotAvailable(false);
        }
    }
}

MyShortcutField* UserAssinableWindowController::getMyShortcutField(int index) const
{
    const auto place = static_cast<std::size_t>(index);
    return place < m_shortcutFields.size() ? m_shortcutFields[place]->view() : nullptr;
}

} // namespace kestrel
