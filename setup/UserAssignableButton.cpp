#include "setup/UserAssignableButton.h"

#include "common/KestrelUtilities.h"
#include "common/NotificationCenter.h"
#include "setup/KeyAdvice.h"
#include "setup/UserAssignableButtonController.h"
#include "shortcut/InterfaceFont.h"
#include "shortcut/MyShortcutField.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>

namespace kestrel {

namespace {
// Masks the bits of the modifier flags that do not depend on the device.
constexpr ModifierFlags DeviceIndependent = 0xFFFF0000;
} // namespace

UserAssignableButton::UserAssignableButton(
    const QRect& frame, const InterfaceServices& services, QWidget* parent)
    : QAbstractButton(parent)
    , m_services(services)
    , m_attributes(createFontAttribute())
{
    setGeometry(frame);
    setCheckable(true);
    // Qt then refuses to turn the selected button off and reports the buttons as radio buttons.
    setAutoExclusive(true);
    setFocusPolicy(Qt::TabFocus);
    setTag(0);
}

UserAssignableButton::~UserAssignableButton()
{
    closeEditBox();
}

UserAssignableButton::TextAttributes UserAssignableButton::createFontAttribute()
{
    return { smallSystemFont(), Qt::black, Qt::AlignHCenter };
}

void UserAssignableButton::setShortcutArray(const ButtonEntry& entry)
{
    m_shortcutArray = entry;
    setNeedsDisplay();
}

void UserAssignableButton::setUniqueName(const QString& name)
{
    m_uniqueName = name;
    setNeedsDisplay();
    if (m_renamed)
        m_renamed(name);
}

void UserAssignableButton::setMarks(const KeyMarks& marks)
{
    if (marks == m_marks)
        return;
    m_marks = marks;
    setNeedsDisplay();
}

void UserAssignableButton::setRenamed(std::function<void(const QString&)> renamed)
{
    m_renamed = std::move(renamed);
}

void UserAssignableButton::setNeedsDisplay()
{
    const bool isEditable = !m_uniqueName.isEmpty() && mayBeRenamed();
    setCursor(isEditable ? Qt::IBeamCursor : Qt::PointingHandCursor);
    announceWords();
    update();
}

int UserAssignableButton::getEntryShortcutNum() const
{
    int count = 0;
    for (std::size_t record = 0; record < ShortcutRecordCount; ++record)
        count += shortcutText(record).isEmpty() ? 0 : 1;
    return count;
}

bool UserAssignableButton::showsItsNumber() const
{
    return m_uniqueName.isEmpty() && m_shortcutArray && getEntryShortcutNum() == 0;
}

QString UserAssignableButton::shortcutText(std::size_t record) const
{
    if (!m_shortcutArray)
        return {};
    const auto element = [&](std::size_t place) -> const ArchiveValue& {
        return m_shortcutArray->at(record * ShortcutRecordSize + place);
    };
    return KestrelUtilities::getShortcutKey(
        static_cast<std::uint64_t>(element(ShortcutRecord::Modifiers).toInt32()),
        static_cast<std::uint64_t>(element(ShortcutRecord::KeyCode).toInt32()),
        element(ShortcutRecord::Text).text());
}

void UserAssignableButton::mouseDown(QMouseEvent& event, int clickCount)
{
    const bool wasSelected = m_delegate->currentButtonId() == m_tag;
    if (!wasSelected) {
        m_delegate->mouseDown();
        QAbstractButton::mousePressEvent(&event);
    }
    if (clickCount == 2 && mayBeRenamed())
        openEditBox();
    if (!wasSelected)
        m_services.notificationCenter.post(NotificationName::refreshShortcutName, this);
}

void UserAssignableButton::setState(State state)
{
    closeEditBox();
    setAutoExclusive(false); // the group may turn all buttons off
    setChecked(state == State::On);
    setAutoExclusive(true);
}

void UserAssignableButton::openEditBox()
{
    closeEditBox();
    m_editBox = new RenameBox(geometry(), m_uniqueName, m_services, parentWidget());
    m_editBox->setAccessibleName(QStringLiteral("Name of button %1").arg(m_tag + 1));
    m_editBox->setDelegate(
        [this](RenameBox::Command command) { return controlTextViewDoCommandBySelector(command); });
    setTabOrder(this, m_editBox);
    m_editBox->show();
    MyShortcutField::makeWindowFirstResponder(*window());
    m_editBox->setFocus(Qt::OtherFocusReason);
}

// The box may be handling an event when this is called, so it is deleted later.
void UserAssignableButton::closeEditBox()
{
    if (!m_editBox)
        return;
    RenameBox* box = m_editBox;
    m_editBox.clear();
    box->setDelegate(nullptr);
    box->clearFocus();
    box->hide();
    box->deleteLater();
}

bool UserAssignableButton::controlTextViewDoCommandBySelector(RenameBox::Command command)
{
    switch (command) {
    case RenameBox::Command::InsertNewline:
        if (m_editBox)
            setUniqueName(m_editBox->stringValue());
        closeEditBox();
        setFocus(Qt::OtherFocusReason);
        return true;
    case RenameBox::Command::CancelOperation:
        closeEditBox();
        setFocus(Qt::OtherFocusReason);
        return true;
    case RenameBox::Command::Noop:
        sendEvent();
        return false;
    case RenameBox::Command::Other:
        return false;
    }
    return false;
}

void UserAssignableButton::sendEvent()
{
    if (!m_editBox || !m_editBox->currentEvent())
        return;
    const KeyPress& event = *m_editBox->currentEvent();
    const ModifierFlags flags = event.flags & DeviceIndependent;
    const QString& characters = event.charactersIgnoringModifiers;
    if (flags == Modifier::Command) {
        if (characters == u"x")
            m_editBox->cut();
        else if (characters == u"c")
            m_editBox->copy();
        else if (characters == u"v")
            m_editBox->paste();
        else if (characters == u"z")
            m_editBox->undo();
        else if (characters == u"a")
            m_editBox->selectAll();
    } else if (flags == (Modifier::Command | Modifier::Shift) && characters == u"Z") {
        m_editBox->redo();
    }
}

// The tool tip depends on more than the button is told of, so it is made when it is shown.
bool UserAssignableButton::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractButton::event(event);
    QToolTip::showText(
        static_cast<QHelpEvent*>(event)->globalPos(), KeyAdvice::toolTip(*this), this);
    return true;
}

void UserAssignableButton::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool renames = key == Qt::Key_F2 || key == Qt::Key_Return || key == Qt::Key_Enter;
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (!renames || !isPlain || !isChecked() || !mayBeRenamed())
        QAbstractButton::keyPressEvent(event);
    else if (!event->isAutoRepeat()) // the Return that has just ended the renaming may be held
        rename();
}

void UserAssignableButton::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        mouseDown(*event, 1);
}

void UserAssignableButton::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        mouseDown(*event, 2);
}

// A click never turns the button off.
void UserAssignableButton::nextCheckState()
{
    setChecked(true);
}

// Skips QAbstractButton::focusInEvent(), which would take all other radio buttons out of the tab
// order.
void UserAssignableButton::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event); // NOLINT(bugprone-parent-virtual-call)
}

} // namespace kestrel
