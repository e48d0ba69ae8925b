#pragma once

#include "panel/PlugInPanelView.h"

#include <QAccessibleWidget>

#include <array>

namespace kestrel {

// The panel as assistive technology sees it: two rows of text, four knobs and eight lamps, in
// reading order, and a notification.
class PlugInPanelAccessible : public QAccessibleWidget {
public:
    static constexpr int Rows = 2;
    static constexpr int FirstKnob = Rows;
    static constexpr int FirstSwitch = FirstKnob + static_cast<int>(PanelLayout::Knobs);
    // Tells a sentence where Qt has no announcements: before version 6.8.
    static constexpr int Notification = FirstSwitch + static_cast<int>(PanelLayout::Switches);
    static constexpr int Children = Notification + (QT_VERSION < QT_VERSION_CHECK(6, 8, 0) ? 1 : 0);

    explicit PlugInPanelAccessible(PlugInPanelView* view);
    ~PlugInPanelAccessible() override;

    // Registers the factory of this class, and of the panel's window, with Qt. Further calls do no
    // harm.
    static void install();

    [[nodiscard]] static int childOfSwitch(std::size_t lamp); // the index of the lamp's item

    [[nodiscard]] int childCount() const override;
    [[nodiscard]] QAccessibleInterface* child(int index) const override;
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override;
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override;

private:
    std::array<QAccessible::Id, Children> m_children; // Qt owns the children by ID
};

} // namespace kestrel
