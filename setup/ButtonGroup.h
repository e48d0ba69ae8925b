#pragma once

#include <cstdint>
#include <vector>

namespace kestrel {

class UserAssignableButtonController;

// Knows which of the user-assignable buttons is selected. Main thread only.
class ButtonGroup {
public:
    using ButtonControllers = std::vector<UserAssignableButtonController*>; // in order of creation

    [[nodiscard]] static ButtonGroup& sharedInstance();

    // The controllers add and remove themselves; the group does not own them.
    void addButtonController(UserAssignableButtonController* controller);
    void removeButtonController(UserAssignableButtonController* controller);

    // 0-based. Turns that button on and every other off.
    void setCurrentButtonId(std::int32_t id);
    [[nodiscard]] std::int32_t currentButtonId() const { return m_currentButtonId; }

    [[nodiscard]] const ButtonControllers& buttonControllers() const { return m_buttonControllers; }

private:
    ButtonGroup() = default;

    std::int32_t m_currentButtonId = 0;
    ButtonControllers m_buttonControllers;
};

} // namespace kestrel
