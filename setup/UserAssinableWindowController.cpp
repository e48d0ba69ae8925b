#include "setup/UserAssinableWindowController.h"

#include "common/ApplicationVisibility.h"
#include "common/WindowVisibility.h"
#include "setup/SetupTables.h"
#include "shortcut/ClearButton.h"

#include <QFileDialog>

#include <algorithm>

namespace kestrel {

namespace {

constexpr int ButtonCount = UserAssignFile::ButtonCount;
constexpr int FieldCount = SetupTables::FieldCount;

constexpr std::size_t offsetOf(std::size_t record)
{
    return record * ShortcutRecordSize;
}

void appendEmptyElement(ArchiveArray& entry)
{
    if (entry.size() % ShortcutRecordSize == ShortcutRecord::Text)
        entry.append(QString());
    else
        entry.append(0);
}

void copyEntry(const ButtonEntry& source, const ButtonEntry& destination)
{
    for (std::size_t record = 0; record < ShortcutRecordCount; ++record)
        UserAssinableWindowController::copyShortcutData(offsetOf(record), source, destination);
}

} // namespace

void UserAssinableWindowController::setMyWindowController(WindowVisibility* panel)
{
    m_myWindowController = panel;
}

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

// A record that ends early is completed in the source, one that is missing is appended to it.
void UserAssinableWindowController::copyShortcutData(
    std::size_t offset, const ButtonEntry& srcArry, const ButtonEntry& dstArray)
{
    const bool isMissing = srcArry->size() <= offset;
    if (isMissing) {
        for (const ArchiveValue& element : ArchiveArray { 0, 0, QString(), 0 })
            srcArry->append(element);
        return;
    }
    while (srcArry->size() < offset + ShortcutRecordSize)
        appendEmptyElement(*srcArry);
    if (!dstArray)
        return;
    for (std::size_t i = offset; i < offset + ShortcutRecordSize; ++i)
        dstArray->replace(i, srcArry->at(i));
}

void UserAssinableWindowController::setupShortcut(const UserAssignFile& set)
{
    if (!m_myShortcutArray)
        m_myShortcutArray = std::make_shared<ArchiveDictionary>();
    for (const ArchiveValue& key : set.allKeys()) {
        const ButtonEntry source = set.getShortcut(key);
        if (!source)
            continue;
        const auto entry = std::make_shared<ArchiveArray>();
        while (entry->size() < ButtonEntrySize)
            appendEmptyElement(*entry);
        copyEntry(source, entry);
        m_myShortcutArray->set(key, entry);
        for (int index = 0; index < ButtonCount; ++index) {
            if (key != ArchiveValue(index + 1))
                continue;
            button(index)->setShortcutArray(entry);
            if (const auto title = set.getShortcutTitle(key))
                button(index)->setUniqueName(*title);
            button(index)->setNeedsDisplay();
        }
    }
    enabledAssignButton();
}

void UserAssinableWindowController::changeShortcut(UserAssignFile& set)
{
    if (!m_myShortcutArray)
        return;
    writeAssignments(set);
    for (int index = 0; index < ButtonCount; ++index)
        button(index)->setNeedsDisplay();
    refreshShortcutText();
}

void UserAssinableWindowController::writeAssignments(UserAssignFile& set) const
{
    if (!m_myShortcutArray)
        return;
    for (const auto& [key, value] : *m_myShortcutArray) {
        if (const ButtonEntry entry = value.array())
            copyEntry(entry, set.getShortcut(key));
    }
    for (int index = 0; index < ButtonCount; ++index) {
        const QString name = button(index)->uniqueName();
        // A button without an entry has never taken over its title.
        const bool hasTitle = !name.isEmpty() || m_myShortcutArray->contains(index + 1);
        if (hasTitle && set.getShortcutTitle(index + 1))
            set.setShortcutTitle(name, index + 1);
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
    for (int index = 0; index < FieldCount; ++index) {
        const std::size_t offset = offsetOf(static_cast<std::size_t>(index));
        getMyShortcutField(index)->replaceUserAssignParam(static_cast<std::int64_t>(offset), entry);
        isEmpty = isEmpty && entry->at(offset + ShortcutRecord::Text).text().isEmpty();
    }
    if (isEmpty)
        currentButton()->setUniqueName({});
    currentButton()->setNeedsDisplay();
    enabledAssignButton();
}

void UserAssinableWindowController::ok()
{
    m_bOKclose = true;
    if (m_myUserAssignFile)
        changeShortcut(*m_myUserAssignFile);
    closeDialog();
}

void UserAssinableWindowController::cancel()
{
    const auto live = m_myUserAssignFile ? m_myUserAssignFile->getShortcutArray() : nullptr;
    for (int index = 0; index < ButtonCount; ++index) {
        if (!live || !live->contains(index + 1))
            continue;
        if (const auto title = m_myUserAssignFile->getShortcutTitle(index + 1))
            button(index)->setUniqueName(*title);
    }
    closeDialog();
}

void UserAssinableWindowController::updateAssignButton()
{
    enabledAssignButton();
}

void UserAssinableWindowController::mouseDown()
{
    hideUserAssignEditBox();
}

void UserAssinableWindowController::windowClosing(const Notification& notification)
{
    // The panel may have closed while the sheet was up, and taken the marker with it.
    const bool isSheet = qobject_cast<const QFileDialog*>(notification.object) != nullptr;
    if (!m_visibleFileDialog && !isSheet) {
        m_savedFrame.save(*m_window);
        const bool isPanelVisible = m_myWindowController && m_myWindowController->isVisible();
        m_services.visibility.hide();
        if (isPanelVisible)
            m_myWindowController->showWindow();
        setOriginalShortcut();
        hideUserAssignEditBox();
    }
    m_visibleFileDialog = false;
}

void UserAssinableWindowController::userAssign(const Notification&)
{
    refreshShortcutText();
    setFocusShortcutText();
}

void UserAssinableWindowController::hideUserAssignEditBoxNotify(const Notification&)
{
    hideUserAssignEditBox();
}

void UserAssinableWindowController::refreshShortcutText()
{
    if (const ButtonEntry entry = currentEntry()) {
        for (int index = 0; index < FieldCount; ++index)
            getMyShortcutField(index)->setUserAssignParam(
                static_cast<std::int64_t>(offsetOf(static_cast<std::size_t>(index))), entry);
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
        isChanged = getMyShortcutField(index)->compareUserAssignParam(
            static_cast<std::int64_t>(offsetOf(static_cast<std::size_t>(index))), entry);
    m_assignButton->setEnabled(isChanged);
    hiddenShortcutText();
}

// The first field, every filled one, the one after a filled one, and the gaps before a filled one.
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

void UserAssinableWindowController::closeDialog()
{
    m_savedFrame.save(*m_window);
    MyShortcutField::makeWindowFirstResponder(*m_window);
    m_window->close();
}

void UserAssinableWindowController::setOriginalShortcut()
{
    if (m_bOKclose || !m_myUserAssignFile)
        return;
    setupShortcut(*m_myUserAssignFile);
    refreshShortcutText();
}

void UserAssinableWindowController::hideUserAssignEditBox()
{
    for (const auto& controller : m_userAssignableButtons) {
        controller->view()->setNeedsDisplay();
        controller->view()->closeEditBox();
    }
}

MyShortcutField* UserAssinableWindowController::getMyShortcutField(int index) const
{
    const auto place = static_cast<std::size_t>(index);
    return place < m_shortcutFields.size() ? m_shortcutFields[place]->view() : nullptr;
}

UserAssignableButton* UserAssinableWindowController::button(int index) const
{
    return m_userAssignableButtons[static_cast<std::size_t>(index)]->view();
}

UserAssignableButton* UserAssinableWindowController::currentButton() const
{
    return button(m_userAssignableButtons.front()->currentButtonId());
}

ButtonEntry UserAssinableWindowController::currentEntry() const
{
    if (m_userAssignableButtons.empty() || !m_myShortcutArray)
        return nullptr;
    return m_myShortcutArray->value(m_userAssignableButtons.front()->currentButtonId() + 1).array();
}

} // namespace kestrel
