#pragma once

#include "setup/SetupWindow.h"

#include <QAccessible>
#include <QPointer>

namespace kestrel {

// One engraving of the setup window, for assistive technology.
class EngravingAccessible : public QAccessibleInterface {
public:
    EngravingAccessible(SetupWindow* window, std::size_t index);

    [[nodiscard]] bool isValid() const override { return !m_window.isNull(); }
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
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;

private:
    QPointer<SetupWindow> m_window;
    std::size_t m_index;
};

} // namespace kestrel
