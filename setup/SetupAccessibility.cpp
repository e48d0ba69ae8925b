#include "setup/SetupAccessibility.h"

#include "setup/SetupWindowAccessible.h"
#include "setup/UserAssignableButtonAccessible.h"

namespace kestrel {

namespace {
QAccessibleInterface* setupInterface(const QString&, QObject* object)
{
    if (auto* window = dynamic_cast<SetupWindow*>(object))
        return new SetupWindowAccessible(window);
    if (auto* button = dynamic_cast<UserAssignableButton*>(object))
        return new UserAssignableButtonAccessible(button);
    return nullptr;
}
} // namespace

void installSetupAccessibility()
{
    QAccessible::installFactory(&setupInterface);
}

} // namespace kestrel
