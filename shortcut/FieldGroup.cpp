#include "shortcut/FieldGroup.h"

#include <utility>

namespace kestrel {

FieldGroup& FieldGroup::sharedInstance()
{
    static FieldGroup group;
    return group;
}

void FieldGroup::addFieldController(ShortcutFieldController* controller)
{
    m_fieldControllers.push_back(controller);
}

void FieldGroup::removeFieldController(ShortcutFieldController* controller)
{
    std::erase(m_fieldControllers, controller);
}

void FieldGroup::setFieldControllers(FieldControllers controllers)
{
    m_fieldControllers = std::move(controllers);
}

} // namespace kestrel
