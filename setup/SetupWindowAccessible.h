#pragma once

#include "setup/SetupWindow.h"

#include <QAccessibleWidget>

#include <vector>

namespace kestrel {

// The setup window as assistive technology sees it. Its children are the controls and the
// engravings in reading order, which is the tab order.
class SetupWindowAccessible : public QAccessibleWidget {
public:
    explicit SetupWindowAccessible(SetupWindow* window);
    ~SetupWindowAccessible() override;

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;

private:
    using Children = std::vector<QAccessibleInterface*>;

    [[nodiscard]] SetupWindow& setupWindow() const;
    [[nodiscard]] Children children() const;
    [[nodiscard]] QAccessibleInterface* engraving(std::size_t index) const;

    // Made when they are asked for, because the window may be asked before it has all engravings.
    mutable std::vector<QAccessible::Id> m_engravings; // Qt owns them by ID
};

} // namespace kestrel
