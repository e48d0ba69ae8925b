#pragma once

#include <QAccessible>

namespace kestrel {

// Something drawn that is no QObject of its own and has no parts, for assistive technology. Its
// name cannot be changed.
class ChildlessAccessible : public QAccessibleInterface {
public:
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    void setText(QAccessible::Text, const QString&) override { }
};

} // namespace kestrel
