#include "shortcut/MyShortcutFieldAccessible.h"

#include "shortcut/ClearButton.h"
#include "shortcut/FieldAdvice.h"
#include "shortcut/FieldAlertAccessible.h"

namespace kestrel {

namespace {
QAccessibleInterface* fieldInterface(const QString&, QObject* object)
{
    auto* field = dynamic_cast<MyShortcutField*>(object);
    return field ? new MyShortcutFieldAccessible(field) : nullptr;
}
} // namespace

void MyShortcutFieldAccessible::install()
{
    QAccessible::installFactory(&fieldInterface);
}

MyShortcutFieldAccessible::MyShortcutFieldAccessible(MyShortcutField* field)
    : QAccessibleWidget(field, QAccessible::EditableText)
    , m_alert(QAccessible::registerAccessibleInterface(new FieldAlertAccessible(field)))
{
}

MyShortcutFieldAccessible::~MyShortcutFieldAccessible()
{
    QAccessible::deleteAccessibleInterface(m_alert);
}

MyShortcutField& MyShortcutFieldAccessible::field() const
{
    return *static_cast<MyShortcutField*>(widget());
}

QAccessibleInterface* MyShortcutFieldAccessible::child(int index) const
{
    return index == 0 ? QAccessible::accessibleInterface(m_alert) : nullptr;
}

int MyShortcutFieldAccessible::indexOfChild(const QAccessibleInterface* wanted) const
{
    return wanted == child(0) ? 0 : -1;
}

QString MyShortcutFieldAccessible::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Value)
        return field().shownShortcut();
    if (kind != QAccessible::Description)
        return QAccessibleWidget::text(kind);
    return FieldAdvice::spoken(field());
}

QRect MyShortcutFieldAccessible::rect() const
{
    QRect seen = QAccessibleWidget::rect();
    const ClearButton* clear = field().myClearButton();
    if (clear && clear->isVisible())
        seen.setWidth(std::min(seen.width(), clear->x() - field().x()));
    return seen;
}

QAccessible::State MyShortcutFieldAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = true;
    return state;
}

void* MyShortcutFieldAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

void MyShortcutFieldAccessible::selection(int, int* startOffset, int* endOffset) const
{
    *startOffset = 0;
    *endOffset = 0;
}

QString MyShortcutFieldAccessible::text(int startOffset, int endOffset) const
{
    return field().shownShortcut().mid(startOffset, endOffset - startOffset);
}

int MyShortcutFieldAccessible::characterCount() const
{
    return static_cast<int>(field().shownShortcut().size());
}

int MyShortcutFieldAccessible::offsetAtPoint(const QPoint& point) const
{
    return rect().contains(point) ? 0 : -1;
}

QString MyShortcutFieldAccessible::attributes(int, int* startOffset, int* endOffset) const
{
    *startOffset = 0;
    *endOffset = characterCount();
    return {};
}

} // namespace kestrel
