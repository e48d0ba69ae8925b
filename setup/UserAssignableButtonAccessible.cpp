#include "setup/UserAssignableButtonAccessible.h"

namespace kestrel {

UserAssignableButtonAccessible::UserAssignableButtonAccessible(UserAssignableButton* button)
    : QAccessibleWidget(button, QAccessible::RadioButton)
{
}

UserAssignableButton& UserAssignableButtonAccessible::button() const
{
    return *static_cast<UserAssignableButton*>(widget());
}

QString UserAssignableButtonAccessible::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Name)
        return button().spokenName();
    return kind == QAccessible::Description ? button().spokenWords()
                                            : QAccessibleWidget::text(kind);
}

QAccessible::State UserAssignableButtonAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.checkable = true;
    state.checked = button().isChecked();
    state.pressed = button().isDown();
    return state;
}

QStringList UserAssignableButtonAccessible::actionNames() const
{
    QStringList names { toggleAction() };
    if (button().mayBeRenamed())
        names.append(RenameAction);
    return names + QAccessibleWidget::actionNames();
}

QString UserAssignableButtonAccessible::localizedActionName(const QString& name) const
{
    return name == RenameAction ? QStringLiteral("Rename")
                                : QAccessibleWidget::localizedActionName(name);
}

QString UserAssignableButtonAccessible::localizedActionDescription(const QString& name) const
{
    return name == RenameAction ? QStringLiteral("Opens a box for the name of the key")
                                : QAccessibleWidget::localizedActionDescription(name);
}

void UserAssignableButtonAccessible::doAction(const QString& name)
{
    if (name == toggleAction())
        button().setChecked(true);
    else if (name == RenameAction)
        button().rename();
    else
        QAccessibleWidget::doAction(name);
}

} // namespace kestrel
