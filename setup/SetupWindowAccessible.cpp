#include "setup/SetupWindowAccessible.h"

#include "setup/EngravingAccessible.h"

#include <algorithm>

namespace kestrel {

SetupWindowAccessible::SetupWindowAccessible(SetupWindow* window)
    : QAccessibleWidget(window, QAccessible::Window)
{
}

SetupWindowAccessible::~SetupWindowAccessible()
{
    for (const QAccessible::Id id : m_engravings)
        QAccessible::deleteAccessibleInterface(id);
}

SetupWindow& SetupWindowAccessible::setupWindow() const
{
    return *static_cast<SetupWindow*>(widget());
}

QAccessibleInterface* SetupWindowAccessible::engraving(std::size_t index) const
{
    while (m_engravings.size() <= index) {
        m_engravings.push_back(QAccessible::registerAccessibleInterface(
            new EngravingAccessible(&setupWindow(), m_engravings.size())));
    }
    return QAccessible::accessibleInterface(m_engravings[index]);
}

SetupWindowAccessible::Children SetupWindowAccessible::children() const
{
    Children children;
    const auto& engravings = setupWindow().engravings();
    const QWidget* const window = widget();
    for (QWidget* next = window->nextInFocusChain(); next && next != window;
         next = next->nextInFocusChain()) {
        if (next->parentWidget() != window || next->isWindow())
            continue;
        for (std::size_t i = 0; i < engravings.size(); ++i) {
            if (engravings[i].next == next)
                children.push_back(engraving(i));
        }
        children.push_back(QAccessible::queryAccessibleInterface(next));
    }
    return children;
}

int SetupWindowAccessible::childCount() const
{
    return static_cast<int>(children().size());
}

QAccessibleInterface* SetupWindowAccessible::child(int index) const
{
    const Children all = children();
    const auto place = static_cast<std::size_t>(index);
    return place < all.size() ? all[place] : nullptr;
}

int SetupWindowAccessible::indexOfChild(const QAccessibleInterface* wanted) const
{
    const Children all = children();
    const auto found = std::find(all.begin(), all.end(), wanted);
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}

// A control lies above an engraving, and above each control that was made before it.
QAccessibleInterface* SetupWindowAccessible::childAt(int x, int y) const
{
    const QPoint inWindow = widget()->mapFromGlobal(QPoint(x, y));
    QWidget* control = widget()->childAt(inWindow);
    while (control && control->parentWidget() != widget())
        control = control->parentWidget();
    if (control)
        return QAccessible::queryAccessibleInterface(control);
    for (std::size_t i = 0; i < setupWindow().engravings().size(); ++i) {
        if (QAccessibleInterface* text = engraving(i); text->rect().contains(x, y))
            return text;
    }
    return nullptr;
}

} // namespace kestrel
