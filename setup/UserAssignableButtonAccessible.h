#pragma once

#include "setup/UserAssignableButton.h"

#include <QAccessibleWidget>

namespace kestrel {

// A key of the setup window as assistive technology sees it: a radio button that can be renamed.
class UserAssignableButtonAccessible : public QAccessibleWidget {
public:
    static inline const QString RenameAction = QStringLiteral("rename");

    explicit UserAssignableButtonAccessible(UserAssignableButton* button);

    // The number and the name; the description lists the shortcuts.
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QAccessible::State state() const override;

    // A key without a shortcut cannot be renamed.
    [[nodiscard]] QStringList actionNames() const override;
    [[nodiscard]] QString localizedActionName(const QString& name) const override;
    [[nodiscard]] QString localizedActionDescription(const QString& name) const override;
    void doAction(const QString& name) override;

private:
    [[nodiscard]] UserAssignableButton& button() const;
};

} // namespace kestrel
