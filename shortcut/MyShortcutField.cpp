#include "shortcut/MyShortcutField.h"

#include "assign/KeyNames.h"
#include "common/KestrelUtilities.h"
#include "common/NotificationCenter.h"
#include "shortcut/ClearButton.h"
#include "shortcut/ShortcutFieldController.h"

#include <algorithm>

namespace kestrel {

namespace {

constexpr qsizetype LongestLine = 13; // UTF-16 units

// True if the entry has a whole record at the offset. `place` is then the index of its first
// element.
bool hasRecord(const ButtonEntry& entry, std::int64_t offset, std::size_t& place)
{
    if (!entry || offset < 0 || entry->size() < ShortcutRecordSize)
        return false;
    place = static_cast<std::size_t>(offset);
    return place <= entry->size() - ShortcutRecordSize;
}

} // namespace

void MyShortcutField::setUserAssignParam(std::int64_t offset, const ButtonEntry& userArray)
{
    std::size_t place = 0;
    if (!hasRecord(userArray, offset, place)) {
        updateClearButton();
        return;
    }
    m_myIndex = offset;
    setBNotAvailable(false); // the field now shows the record of the entry
    if (!m_myUserArray)
        m_myUserArray = std::make_shared<ArchiveArray>(emptyShortcutRecord());
    for (std::size_t i = 0; i < ShortcutRecordSize; ++i)
        m_myUserArray->replace(i, userArray->at(place + i));
    if (isEntryShortcut())
        drawShortcutKey(static_cast<std::uint64_t>(element(ShortcutRecord::Modifiers).toInt32()),
            static_cast<std::uint64_t>(element(ShortcutRecord::KeyCode).toInt32()),
            getInputCharacters());
    else
        setTitleWithMnemonic({});
    updateClearButton();
}

void MyShortcutField::replaceUserAssignParam(std::int64_t offset, const ButtonEntry& userArray)
{
    std::size_t place = 0;
    if (!m_myUserArray || !hasRecord(userArray, offset, place))
        return;
    for (std::size_t i = 0; i < ShortcutRecordSize; ++i)
        userArray->replace(place + i, element(i));
}

bool MyShortcutField::compareUserAssignParam(
    std::int64_t offset, const ButtonEntry& userArray) const
{
    std::size_t place = 0;
    if (!m_myUserArray || !hasRecord(userArray, offset, place))
        return false;
    const auto differs
        = [&](std::size_t i) { return userArray->at(place + i).toInt32() != element(i).toInt32(); };
    return differs(ShortcutRecord::Modifiers) || differs(ShortcutRecord::KeyCode);
}

bool MyShortcutField::isEntryShortcut() const
{
    return !element(ShortcutRecord::Text).text().isEmpty();
}

void MyShortcutField::clearShortcut()
{
    if (m_myUserArray)
        *m_myUserArray = emptyShortcutRecord();
    setBNotAvailable(false);
    sendAction();
}

void MyShortcutField::setBNotAvailable(bool bNotAvailable)
{
    m_bNotAvailable = bNotAvailable;
    m_announcer.fieldChanged();
}

void MyShortcutField::updateClearButton()
{
    if (m_myClearButton)
        m_myClearButton->setEnabled(isEntryShortcut());
}

bool MyShortcutField::isFncKey() const
{
    return isFncKey(static_cast<std::uint64_t>(element(ShortcutRecord::KeyCode).toInt32()));
}

bool MyShortcutField::isFncKey(std::uint64_t keyCode) const
{
    return KeyNames::isFunctionKey(keyCode);
}

bool MyShortcutField::isAlradyEntryFncKey(std::uint64_t keyCode) const
{
    if (!m_shortcutFields || !isFncKey(keyCode))
        return false;
    return std::any_of(
        m_shortcutFields->begin(), m_shortcutFields->end(), [this](const auto& controller) {
            const MyShortcutField* field = controller ? controller->view() : nullptr;
            return field && field != this && field->isFncKey();
        });
}

QString MyShortcutField::getInputCharacters() const
{
    return element(ShortcutRecord::Text).text();
}

QString MyShortcutField::getShortcutKey(
    std::uint64_t keyFlags, std::uint64_t keyCode, const QString& inputStr) const
{
    return KestrelUtilities::getShortcutKey(keyFlags, keyCode, inputStr);
}

void MyShortcutField::drawShortcutKey(
    std::uint64_t keyFlags, std::uint64_t keyCode, const QString& inputStr)
{
    QString text = getShortcutKey(keyFlags, keyCode, inputStr);
    if (text.size() > LongestLine)
        text.insert(LongestLine, u'\n');
    setTitleWithMnemonic(text);
}

void MyShortcutField::keyDown(const KeyPress& event)
{
    if (isAlradyEntryFncKey(event.keyCode)) {
        setTitleWithMnemonic(NotAvailable);
        clearShortcut();
        setBNotAvailable(true);
    } else {
        capture(event);
        updateClearButton();
        setBNotAvailable(false);
    }
    sendAction();
}

void MyShortcutField::capture(const KeyPress& event)
{
    const QString name = KeyNames::keyName(event.keyCode, event.charactersIgnoringModifiers);
    if (m_myUserArray) {
        const ArchiveValue heldKeyCode = element(ShortcutRecord::KeyCode);
        m_myUserArray->replace(ShortcutRecord::Modifiers, static_cast<std::int32_t>(event.flags));
        m_myUserArray->replace(ShortcutRecord::KeyCode, event.keyCode);
        m_myUserArray->replace(ShortcutRecord::Text, name);
        // The repeat flag changes only with the key code: a held key keeps the flag of its first
        // press.
        if (heldKeyCode != element(ShortcutRecord::KeyCode))
            m_myUserArray->replace(ShortcutRecord::Repeat, event.isARepeat);
    }
    drawShortcutKey(event.flags, event.keyCode, name);
}

void MyShortcutField::sendAction()
{
    if (m_action)
        m_action();
}

bool MyShortcutField::holdsKey() const
{
    return element(ShortcutRecord::Modifiers).toInt32() != 0
        || element(ShortcutRecord::KeyCode).toInt32() != 0;
}

const ArchiveValue& MyShortcutField::element(std::size_t place) const
{
    static const ArchiveArray none;
    return (m_myUserArray ? *m_myUserArray : none).at(place);
}

} // namespace kestrel
