#pragma once

#include "setup/UserAssignableButton.h"

#include <QPointer>

namespace kestrel {

// One user-assignable button of the window, known to the button group as long as it lives. However
// the button is turned on, the group makes it the selected one.
class UserAssignableButtonController {
public:
    UserAssignableButtonController(
        const QRect& frame, const InterfaceServices& services, QWidget* parent = nullptr);
    ~UserAssignableButtonController();
    UserAssignableButtonController(const UserAssignableButtonController&) = delete;
    UserAssignableButtonController& operator=(const UserAssignableButtonController&) = delete;

    // Null once the window that it was in is gone.
    [[nodiscard]] UserAssignableButton* view() const { return m_view; }

    // Of the group: the 0-based index of the selected button.
    [[nodiscard]] std::int32_t currentButtonId() const;
    void setCurrentButtonId(std::int32_t id);

    void mouseDown(); // selects this button

private:
    void select(NotificationCenter& notificationCenter);

    QPointer<UserAssignableButton> m_view; // owned, by the window as well
};

} // namespace kestrel
