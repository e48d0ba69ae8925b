// The part of the setup window that takes a set, assigns shortcuts to it, writes it and discards
// it.

#include "setup/UserAssinableWindowController.h"

#include "setup/SetupTables.h"

namespace kestrel {

namespace {
constexpr int ButtonCount = UserAssignFile::ButtonCount;
} // namespace

void UserAssinableWindowController::initShortcut(std::shared_ptr<UserAssignFile> live)
{
    setupShortcut(*live);
    m_myUserAssignFile = std::move(live);
}

void UserAssinableWindowController::setupUI(const UserAssignFile& set)
{
    setupShortcut(set);
    refreshShortcutText();
    MyShortcutField::makeWindowFirstResponder(*m_window);
    for (int index = 0; index < ButtonCount; ++index)
        button(index)->setNeedsDisplay();
    setFocusShortcutText();
}

void UserAssinableWindowController::copyShortcutData(
    std::size_t offset, const ButtonEntry& srcArry, const ButtonEntry& dstArray)
{
    copyShortcutRecord(offset, srcArry, dstArray);
}

void UserAssinableWindowController::setupShortcut(const UserAssignFile& set)
{
    m_unassigned.leave();
    if (&set == m_myUserAssignFile.get())
        m_unassigned.restore();
    m_workingSet.take(set);
    showWorkingSet();
    enabledAssignButton();
    m_unassigned.setWaiting(false, 0); // nothing was typed for this set
}

void UserAssinableWindowController::changeShortcut(UserAssignFile& set)
{
    if (!m_workingSet.myShortcutArray())
        return;
    m_workingSet.write(set);
    for (int index = 0; index < ButtonCount; ++index)
        button(index)->setNeedsDisplay();
    refreshShortcutText();
    m_unassigned.accept();
}

void UserAssinableWindowController::setOriginalShortcut()
{
    if (m_bOKclose || !m_myUserAssignFile)
        return;
    setupShortcut(*m_myUserAssignFile);
    refreshShortcutText();
}

void UserAssinableWindowController::showWorkingSet()
{
    for (int index = 0; index < ButtonCount; ++index) {
        button(index)->setShortcutArray(m_workingSet.entry(index + 1));
        button(index)->setUniqueName(m_workingSet.name(index + 1));
    }
}

void UserAssinableWindowController::assign()
{
    const ButtonEntry entry = currentEntry();
    if (!entry) {
        enabledAssignButton();
        return;
    }
    bool isEmpty = true;
    for (int index = 0; index < SetupTables::FieldCount; ++index) {
        const std::size_t offset = shortcutRecordOffset(static_cast<std::size_t>(index));
        getMyShortcutField(index)->replaceUserAssignParam(static_cast<std::int64_t>(offset), entry);
        isEmpty = isEmpty && entry->at(offset + ShortcutRecord::Text).text().isEmpty();
    }
    if (UserAssignableButton* const key = currentButton()) {
        if (isEmpty)
            key->setUniqueName({});
        key->setNeedsDisplay();
    }
    enabledAssignButton();
}

void UserAssinableWindowController::ok()
{
    m_bOKclose = true;
    if (m_myUserAssignFile)
        changeShortcut(*m_myUserAssignFile);
    closeDialog();
    m_services.setBecameLive();
}

void UserAssinableWindowController::cancel()
{
    if (m_myUserAssignFile) {
        m_workingSet.takeTitles(*m_myUserAssignFile);
        showWorkingSet();
    }
    closeDialog();
}

} // namespace kestrel
