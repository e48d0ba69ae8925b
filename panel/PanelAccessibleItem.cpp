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
    if (isRow())
        return static_cast<std::size_t>(m_index);
    if (isKnob())
        return static_cast<std::size_t>(m_index - PlugInPanelAccessible::FirstKnob);
    return PanelLayout::SwitchesFromLeft[static_cast<std::size_t>(
        m_index - PlugInPanelAccessible::FirstSwitch)];
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
    const auto& zones = m_view->myZonesArray();
    switch (kind) {
    case QAccessible::Name:
        if (isRow())
            return zones ? PanelText::row(*zones, number()) : QString();
        return isKnob() ? PanelText::knobName(zones, number()) : PanelText::switchName(number());
    case QAccessible::Description:
        return description();
    case QAccessible::Value:
        if (isLamp())
            return PanelText::lampState(isLit());
        return isKnob() ? currentValue().toString() : QString();
    default:
        return {};
    }
}

QString PanelAccessibleItem::description() const
{
    if (isRow())
        return number() == 0 ? QStringLiteral("Upper row") : QStringLiteral("Lower row");
    return isKnob() ? PanelText::ring(ring()) : PanelText::lampState(isLit());
}

QRect PanelAccessibleItem::rect() const
{
    if (!m_view)
        return {};
    const QRect inView = isRow() ? m_view->rowRect(number())
        : isKnob()               ? seen(m_view->imageKnob(), m_view->knobRect(number()))
                                 : seen(m_view->lampImage(PanelLayout::SwitchTable[number()].lamp),
                                     m_view->switchRect(number()));
    return { m_view->mapToGlobal(inView.topLeft()), inView.size() };
}

// All frames of a picture have the same outline, so the first one serves.
QRect PanelAccessibleItem::seen(const InterfaceImage& image, const QRect& place)
{
    const int side = qRound(image.width());
    if (side == 0)
        return place;
    const QRect frame(0, 0, side, side);
    const QRectF part = image.drawn() ? image.drawn()->paintedArea(frame) : QRectF(frame);
    const double scale = static_cast<double>(place.width()) / side;
    return QRectF(place.topLeft() + part.topLeft() * scale, part.size() * scale).toAlignedRect();
}

QAccessible::Role PanelAccessibleItem::role() const
{
    return isRow() ? QAccessible::StaticText : isKnob() ? QAccessible::Dial : QAccessible::CheckBox;
}

QAccessible::State PanelAccessibleItem::state() const
{
    QAccessible::State state;
    state.readOnly = true;
    state.invisible = !m_view || !m_view->isVisible();
    state.checkable = isLamp();
    state.checked = m_view && isLamp() && isLit();
    return state;
}

void* PanelAccessibleItem::interface_cast(QAccessible::InterfaceType type)
{
    return !isRow() && type == QAccessible::ValueInterface
        ? static_cast<QAccessibleValueInterface*>(this)
        : nullptr;
}

QVariant PanelAccessibleItem::currentValue() const
{
    if (!m_view || isRow())
        return 0;
    return isKnob() ? ring().position() : static_cast<int>(isLit());
}

QVariant PanelAccessibleItem::maximumValue() const
{
    if (!m_view || isRow())
        return 0;
    return isKnob() ? ring().lastPosition() : 1;
}

} // namespace kestrel
