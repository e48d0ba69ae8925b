#pragma once

#include "common/ChildlessAccessible.h"
#include "shortcut/MyShortcutField.h"

#include <QPointer>

namespace kestrel {

// The alert "Not Available" of a field, for assistive technology. It is visible while the field
// refuses a key.
class FieldAlertAccessible : public ChildlessAccessible {
public:
    explicit FieldAlertAccessible(MyShortcutField* field)
        : m_field(field)
    {
    }

    [[nodiscard]] bool isValid() const override { return !m_field.isNull(); }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override; // on the screen
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::AlertMessage; }
    [[nodiscard]] QAccessible::State state() const override;

private:
    QPointer<MyShortcutField> m_field;
};

} // namespace kestrel
