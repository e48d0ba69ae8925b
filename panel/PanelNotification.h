#pragma once

#include "common/ChildlessAccessible.h"
#include "panel/PlugInPanelView.h"

#include <QPointer>

namespace kestrel {

// The panel's accessible description, as a notification: screen readers speak one that comes to be
// shown, whatever has the focus.
class PanelNotification : public ChildlessAccessible {
public:
    explicit PanelNotification(PlugInPanelView* view);

    [[nodiscard]] bool isValid() const override { return !m_view.isNull(); }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override { return {}; } // nothing is painted
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::Notification; }
    [[nodiscard]] QAccessible::State state() const override;

private:
    QPointer<PlugInPanelView> m_view;
};

} // namespace kestrel
