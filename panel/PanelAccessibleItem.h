#pragma once

#include "common/ChildlessAccessible.h"
#include "panel/KnobRing.h"
#include "panel/PlugInPanelView.h"

#include <QPointer>

namespace kestrel {

// One row, knob or lamp of the panel, read-only, for assistive technology.
class PanelAccessibleItem : public ChildlessAccessible, public QAccessibleValueInterface {
public:
    // `index` counts the panel's children: the rows, then the knobs, then the lamps from left to
    // right.
    PanelAccessibleItem(PlugInPanelView* view, int index);

    [[nodiscard]] bool isValid() const override { return !m_view.isNull(); }
    [[nodiscard]] QWindow* window() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;

    [[nodiscard]] QString text(QAccessible::Text kind) const override;
    [[nodiscard]] QRect rect() const override; // the part that is painted, on the screen
    [[nodiscard]] QAccessible::Role role() const override;
    [[nodiscard]] QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;

    // The position of a knob's ring, or 0 when no lamp of the ring is lit. 1 for a lit lamp and 0
    // for an unlit one.
    [[nodiscard]] QVariant currentValue() const override;
    void setCurrentValue(const QVariant&) override { }
    [[nodiscard]] QVariant minimumValue() const override { return 0; }
    [[nodiscard]] QVariant maximumValue() const override;
    [[nodiscard]] QVariant minimumStepSize() const override { return 1; }

    [[nodiscard]] int index() const { return m_index; }

private:
    [[nodiscard]] bool isRow() const;
    [[nodiscard]] bool isKnob() const;
    [[nodiscard]] bool isLamp() const { return !isRow() && !isKnob(); }
    [[nodiscard]] std::size_t number() const; // of the row, knob or lamp
    [[nodiscard]] KnobRing ring() const; // only for knobs
    [[nodiscard]] bool isLit() const; // only for lamps
    [[nodiscard]] QString description() const;
    // The painted part of a picture's frame that is drawn in `place`.
    [[nodiscard]] static QRect seen(const InterfaceImage& image, const QRect& place);

    QPointer<PlugInPanelView> m_view;
    int m_index;
};

} // namespace kestrel
