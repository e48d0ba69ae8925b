#pragma once

#include "shortcut/MyShortcutField.h"

namespace kestrel {

// Controls one shortcut field of the window. The field group knows the controller as long as it
// exists.
class ShortcutFieldController {
public:
    ShortcutFieldController(
        const QRect& frame, const InterfaceServices& services, QWidget* parent = nullptr);
    ~ShortcutFieldController();
    ShortcutFieldController(const ShortcutFieldController&) = delete;
    ShortcutFieldController& operator=(const ShortcutFieldController&) = delete;

    // Null once the window of the field has been deleted.
    [[nodiscard]] MyShortcutField* view() const { return m_view; }

    [[nodiscard]] static std::int32_t currentFieldId();
    static void setCurrentFieldId(std::int32_t fieldId);

private:
    QPointer<MyShortcutField> m_view; // the controller deletes it unless the window has
};

} // namespace kestrel
