#pragma once

#include "shortcut/MyShortcutField.h"

namespace kestrel {

// One shortcut field of the window, known to the field group as long as it lives.
class ShortcutFieldController {
public:
    ShortcutFieldController(
        const QRect& frame, const InterfaceServices& services, QWidget* parent = nullptr);
    ~ShortcutFieldController();
    ShortcutFieldController(const ShortcutFieldController&) = delete;
    ShortcutFieldController& operator=(const ShortcutFieldController&) = delete;

    // Null once the window that it was in is gone.
    [[nodiscard]] MyShortcutField* view() const { return m_view; }

    [[nodiscard]] static std::int32_t currentFieldId();
    static void setCurrentFieldId(std::int32_t fieldId);

private:
    QPointer<MyShortcutField> m_view; // owned, by the window as well
};

} // namespace kestrel
