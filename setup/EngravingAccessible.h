#pragma once

#include "common/ChildlessAccessible.h"
#include "setup/SetupWindow.h"

#include <QPointer>

namespace kestrel {

// One engraving of the setup window, for assistive technology.
class EngravingAccessible : public ChildlessAccessible {
public:
    EngravingAccessible(SetupWindow* window, std::size_t index);

    [[nodiscard]] bool isValid() const override { return !m_window.isNull(); }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override; // on the screen
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;

private:
    QPointer<SetupWindow> m_window;
    std::size_t m_index;
};

} // namespace kestrel
