#pragma once

#include <cstdint>
#include <vector>

namespace kestrel {

class ShortcutFieldController;

// Lists all shortcut field controllers of the program in order of creation. Main thread only.
class FieldGroup {
public:
    using FieldControllers = std::vector<ShortcutFieldController*>; // not owned

    [[nodiscard]] static FieldGroup& sharedInstance();

    void addFieldController(ShortcutFieldController* controller);
    void removeFieldController(ShortcutFieldController* controller);

    [[nodiscard]] std::int32_t currentFieldId() const { return m_currentFieldId; }
    void setCurrentFieldId(std::int32_t) { } // the id stays 0

    [[nodiscard]] const FieldControllers& fieldControllers() const { return m_fieldControllers; }
    void setFieldControllers(FieldControllers controllers);

private:
    FieldGroup() = default;

    std::int32_t m_currentFieldId = 0;
    FieldControllers m_fieldControllers;
};

} // namespace kestrel
