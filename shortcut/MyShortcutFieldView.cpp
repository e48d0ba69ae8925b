// The part of the field that handles focus and events.

#include "common/NotificationCenter.h"
#include "shortcut/ClearButton.h"
#include "shortcut/FieldAdvice.h"
#include "shortcut/InterfaceFont.h"
#include "shortcut/MyShortcutField.h"

#include <QFocusEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>

namespace kestrel {

namespace {

bool isAboutTheWindow(const QFocusEvent& event)
{
    return event.reason() == Qt::ActiveWindowFocusReason || event.reason() == Qt::PopupFocusReason;
}

} // namespace

MyShortcutField::MyShortcutField(
    const QRect& frame, const InterfaceServices& services, QWidget* parent)
    : QWidget(parent)
    , m_services(services)
{
    setGeometry(frame);
    setFont(smallSystemFont());
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setCursor(Qt::PointingHandCursor);
}

MyShortcutField::~MyShortcutField() = default;

ClearButton* MyShortcutField::myClearButton() const
{
    return m_myClearButton;
}

void MyShortcutField::setMyClearButton(ClearButton* button)
{
    m_myClearButton = button;
}

void MyShortcutField::setShortcutFields(const ShortcutFields* fields)
{
    m_shortcutFields = fields;
}

void MyShortcutField::setTitleWithMnemonic(const QString& text)
{
    m_stringValue = text;
    m_announcer.fieldChanged();
    update();
}

QString MyShortcutField::shownShortcut() const
{
    return m_bNotAvailable ? QString() : QString(m_stringValue).remove(u'\n');
}

bool MyShortcutField::acceptsFirstResponder()
{
    m_services.notificationCenter.post(NotificationName::hideUserAssignEditBox, this);
    m_bBecome = false;
    return true;
}

bool MyShortcutField::becomeFirstResponder()
{
    update();
    m_bBecome = true;
    return true;
}

bool MyShortcutField::resignFirstResponder()
{
    update();
    m_bBecome = false;
    return true;
}

bool MyShortcutField::performKeyEquivalent(const KeyPress& event)
{
    if (!m_bBecome)
        return false;
    keyDown(event);
    return true;
}

void MyShortcutField::mouseDown()
{
    makeFirstResponder();
}

// Qt sends no focus events in an inactive window, so this function tells the controls itself.
void MyShortcutField::makeFirstResponder()
{
    if (isFirstResponder() || !acceptsFirstResponder())
        return;
    if (auto* former = dynamic_cast<MyShortcutField*>(window()->focusWidget()))
        former->loseFirstResponder();
    m_isFirstResponder = becomeFirstResponder();
    setFocus(Qt::OtherFocusReason);
}

void MyShortcutField::makeWindowFirstResponder(QWidget& window)
{
    QWidget* former = window.focusWidget();
    if (auto* field = dynamic_cast<MyShortcutField*>(former))
        field->loseFirstResponder();
    if (former)
        former->clearFocus();
}

bool MyShortcutField::isFirstResponder() const
{
    return m_isFirstResponder && window()->focusWidget() == this;
}

void MyShortcutField::loseFirstResponder()
{
    if (m_isFirstResponder)
        m_isFirstResponder = !resignFirstResponder();
}

void MyShortcutField::focusInEvent(QFocusEvent*)
{
    if (!m_isFirstResponder && acceptsFirstResponder())
        m_isFirstResponder = becomeFirstResponder();
    update();
}

// A field stays first responder while another window is active.
void MyShortcutField::focusOutEvent(QFocusEvent* event)
{
    if (!isAboutTheWindow(*event))
        loseFirstResponder();
    update();
}

// Handles keys here because keyPressEvent() gets neither Tab nor the shortcuts of menus.
bool MyShortcutField::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        if (m_bBecome)
            event->accept();
        return true;
    case QEvent::KeyPress:
        keyPressed(*static_cast<QKeyEvent*>(event));
        event->accept();
        return true;
    case QEvent::KeyRelease:
        event->accept();
        return true;
    case QEvent::ToolTip:
        // The rule that refuses a key may name another one by now.
        QToolTip::showText(
            static_cast<QHelpEvent*>(event)->globalPos(), FieldAdvice::toolTip(*this), this);
        return true;
    default:
        return QWidget::event(event);
    }
}

void MyShortcutField::keyPressed(const QKeyEvent& event)
{
    const auto press = KeyPress::from(event, m_services.keyTranslation);
    if (press && !performKeyEquivalent(*press))
        keyDown(*press);
}

void MyShortcutField::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        mouseDown();
    else if (event->button() == Qt::RightButton)
        rightMouseDown();
}

} // namespace kestrel
