#include "panel/PanelAccessibleItem.h"

#include "panel/PanelText.h"
#include "panel/PlugInPanelAccessible.h"

namespace kestrel {

PanelAccessibleItem::PanelAccessibleItem(PlugInPanelView* view, int index)
    : m_view(view)
    , m_index(index)
{
}

bool PanelAccessibleItem::isRow() const
{
    return m_index < PlugInPanelAccessible::FirstKnob;
}

bool PanelAccessibleItem::isKnob() const
{
    return !isRow() && m_index < PlugInPanelAccessible::FirstSwitch;
}

std::size_t PanelAccessibleItem::number() const
{
    const int first = isRow() ? 0
        : isKnob()            ? PlugInPanelAccessible::FirstKnob
                              : PlugInPanelAccessible::FirstSwitch;
    return static_cast<std::size_t>(m_index - first);
}

KnobRing PanelAccessibleItem::ring() const
{
    return KnobRing((*m_view->myKnobArray())[number()]);
}

bool PanelAccessibleItem::isLit() const
{
    return PanelLayout::isLit((*m_view->mySwitchArray())[number()]);
}

QWindow* PanelAccessibleItem::window() const
{
    return m_view ? m_view->window()->windowHandle() : nullptr;
}

QAccessibleInterface* PanelAccessibleItem::parent() const
{
    return QAccessible::queryAccessibleInterface(m_view);
}

QString PanelAccessibleItem::text(QAccessible::Text kind) const
{
    if (!m_view)
        return {};
    if (isRow()) {
        if (kind == QAccessible::Description)
            return number() == 0 ? QStringLiteral("Upper row") : QStringLiteral("Lower row");
        const auto& zones = m_view->myZonesArray();
        return kind == QAccessible::Name && zones ? PanelText::row(*zones, number()) : QString();
    }
    if (kind == QAccessible::Name)
        return isKnob() ? PanelText::knobName(number()) : PanelText::switchName(number());
    if (kind == QAccessible::Value)
        return isKnob() ? currentValue().toString() : PanelText::lampState(isLit());
    return kind == QAccessible::Description && isKnob() ? PanelText::ring(ring()) : QString();
}

QRect PanelAccessibleItem::rect() const
{
    if (!m_view)
        return {};
    const QRect inView = isRow() ? m_view->rowRect(number())
        : isKnob()               ? m_view->knobRect(number())
                                 : m_view->switchRect(number());
    return { m_view->mapToGlobal(inView.topLeft()), inView.size() };
}

QAccessible::Role PanelAccessibleItem::role() const
{
    return isRow() ? QAccessible::StaticText : isKnob() ? QAccessible::Dial : QAccessible::CheckBox;
}

QAccessible::State PanelAccessibleItem::state() const
{
    QAccessible::State state;
    state.readOnly = true;
    if (!m_view || !m_view->isVisible())
        state.invisible = true;
    else if (!isRow() && !isKnob())
        state.checked = isLit();
    return state;
}

void* PanelAccessibleItem::interface_cast(QAccessible::InterfaceType type)
{
    return isKnob() && type == QAccessible::ValueInterface
        ? static_cast<QAccessibleValueInterface*>(this)
        : nullptr;
}

QVariant PanelAccessibleItem::currentValue() const
{
    return m_view && isKnob() ? ring().position() : 0;
}

QVariant PanelAccessibleItem::maximumValue() const
{
    return m_view && isKnob() ? ring().lastPosition() : 0;
}

} // namespace kestrel
