#pragma once

#include "shortcut/MyShortcutField.h"

#include <QAccessible>
#include <QPointer>

namespace kestrel {

// The alert "Not Available" of a field, for assistive technology. It is visible while the field
// refuses a key.
class FieldAlertAccessible : public QAccessibleInterface {
public:
    explicit FieldAlertAccessible(MyShortcutField* field)
        : m_field(field)
    {
    }

    [[nodiscard]] bool isValid() const override { return !m_field.isNull(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override { }
    [[nodiscard]] QRect rect() const override; // on the screen
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::AlertMessage; }
    [[nodiscard]] QAccessible::State state() const override;

private:
    QPointer<MyShortcutField> m_field;
};

} // namespace kestrel
