#pragma once

#include <QAccessible>
#include <QApplication>
#include <QWidget>

#include <string>
#include <vector>

// Looks at the window and acts on it as assistive technology does.
namespace kestrel::test {

[[nodiscard]] inline QAccessibleInterface& accessible(QWidget& widget)
{
    return *QAccessible::queryAccessibleInterface(&widget);
}

[[nodiscard]] inline std::vector<QAccessibleInterface*> children(QAccessibleInterface& parent)
{
    std::vector<QAccessibleInterface*> children;
    children.reserve(static_cast<std::size_t>(parent.childCount()));
    for (int i = 0; i < parent.childCount(); ++i)
        children.push_back(parent.child(i));
    return children;
}

inline void giveFocus(QAccessibleInterface& control)
{
    control.actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
}

[[nodiscard]] inline std::string focusedName()
{
    QWidget* focused = QApplication::focusWidget();
    return focused ? accessible(*focused).text(QAccessible::Name).toStdString() : "nobody";
}

} // namespace kestrel::test
