#include "shortcut/ShortcutFieldController.h"

#include "shortcut/FieldGroup.h"

namespace kestrel {

ShortcutFieldController::ShortcutFieldController(
    const QRect& frame, const InterfaceServices& services, QWidget* parent)
    : m_view(new MyShortcutField(frame, services, parent))
{
    FieldGroup::sharedInstance().addFieldController(this);
}

ShortcutFieldController::~ShortcutFieldController()
{
    FieldGroup::sharedInstance().removeFieldController(this);
    delete m_view.data();
}

std::int32_t ShortcutFieldController::currentFieldId()
{
    return FieldGroup::sharedInstance().currentFieldId();
}

void ShortcutFieldController::setCurrentFieldId(std::int32_t fieldId)
{
    FieldGroup::sharedInstance().setCurrentFieldId(fieldId);
}

} // namespace kestrel
