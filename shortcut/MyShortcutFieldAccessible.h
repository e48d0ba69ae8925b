#pragma once

#include "shortcut/MyShortcutField.h"

#include <QAccessibleWidget>

namespace kestrel {

// A capture field as assistive technology sees it: an editable text that holds the shortcut. Its
// one child is the alert "Not Available".
class MyShortcutFieldAccessible : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit MyShortcutFieldAccessible(MyShortcutField* field);
    ~MyShortcutFieldAccessible() override;

    // Registers the factory of this class with Qt. Further calls do no harm.
    static void install();

    [[nodiscard]] int childCount() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }

    using QAccessibleWidget::text;
    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override; // without the part under the clear button
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // The text is the shortcut. It has neither a cursor nor a selection.
    void selection(int index, int* startOffset, int* endOffset) const override;
    [[nodiscard]] int selectionCount() const override { return 0; }
    void addSelection(int, int) override { }
    void removeSelection(int) override { }
    void setSelection(int, int, int) override { }
    [[nodiscard]] int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override { }
    [[nodiscard]] QString text(int startOffset, int endOffset) const override;
    [[nodiscard]] int characterCount() const override;
    [[nodiscard]] QRect characterRect(int) const override { return rect(); }
    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int, int) override { }
    QString attributes(int offset, int* startOffset, int* endOffset) const override;

private:
    [[nodiscard]] MyShortcutField& field() const;

    QAccessible::Id m_alert; // Qt owns the alert by ID
};

} // namespace kestrel
