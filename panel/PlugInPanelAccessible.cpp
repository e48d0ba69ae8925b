#include "panel/PlugInPanelAccessible.h"

#include "panel/DSPWindow.h"
#include "panel/PanelAccessibleItem.h"
#include "panel/PanelNotification.h"

#include <algorithm>

namespace kestrel {

namespace {
QAccessibleInterface* panelInterface(const QString& className, QObject* object)
{
    if (className == QLatin1String(DSPWindow::staticMetaObject.className()))
        return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Window);
    if (className == QLatin1String(PlugInPanelView::staticMetaObject.className()))
        return new PlugInPanelAccessible(static_cast<PlugInPanelView*>(object));
    return nullptr;
}
} // namespace

void PlugInPanelAccessible::install()
{
    QAccessible::installFactory(&panelInterface);
}

PlugInPanelAccessible::PlugInPanelAccessible(PlugInPanelView* view)
    : QAccessibleWidget(view, QAccessible::Grouping, QStringLiteral("Plug-in panel"))
{
    for (int i = 0; i < Notification; ++i) {
        m_children[static_cast<std::size_t>(i)]
            = QAccessible::registerAccessibleInterface(new PanelAccessibleItem(view, i));
    }
    if (Children > Notification)
        m_children.back() = QAccessible::registerAccessibleInterface(new PanelNotification(view));
}

PlugInPanelAccessible::~PlugInPanelAccessible()
{
    for (const QAccessible::Id id : m_children)
        QAccessible::deleteAccessibleInterface(id);
}

int PlugInPanelAccessible::childOfSwitch(std::size_t lamp)
{
    const auto& order = PanelLayout::SwitchesFromLeft;
    return FirstSwitch
        + static_cast<int>(std::find(order.begin(), order.end(), lamp) - order.begin());
}

int PlugInPanelAccessible::childCount() const
{
    return Children;
}

QAccessibleInterface* PlugInPanelAccessible::child(int index) const
{
    if (index < 0 || index >= Children)
        return nullptr;
    return QAccessible::accessibleInterface(m_children[static_cast<std::size_t>(index)]);
}

int PlugInPanelAccessible::indexOfChild(const QAccessibleInterface* wanted) const
{
    for (int i = 0; i < Children; ++i) {
        if (child(i) == wanted)
            return i;
    }
    return -1;
}

QAccessibleInterface* PlugInPanelAccessible::childAt(int x, int y) const
{
    for (int i = 0; i < Children; ++i) {
        if (QAccessibleInterface* item = child(i); item && item->rect().contains(x, y))
            return item;
    }
    return nullptr;
}

} // namespace kestrel
