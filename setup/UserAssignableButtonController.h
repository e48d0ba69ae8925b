#pragma once

#include "setup/UserAssignableButton.h"

#include <QPointer>

namespace kestrel {

// Controls one user-assignable button of the window. The button group knows the controller as long
// as it exists. A button that is turned on by any means becomes the selected one of the group.
class UserAssignableButtonController {
public:
    UserAssignableButtonController(
        const QRect& frame, const InterfaceServices& services, QWidget* parent = nullptr);
    ~UserAssignableButtonController();
    UserAssignableButtonController(const UserAssignableButtonController&) = delete;
    UserAssignableButtonController& operator=(const UserAssignableButtonController&) = delete;

    // Null once the window of the button has been deleted.
    [[nodiscard]] UserAssignableButton* view() const { return m_view; }

    // The 0-based index of the selected button of the group.
    [[nodiscard]] std::int32_t currentButtonId() const;
    void setCurrentButtonId(std::int32_t id);

    void mouseDown(); // selects this button

private:
    void select(NotificationCenter& notificationCenter);

    QPointer<UserAssignableButton> m_view; // the controller deletes it unless the window has
};

} // namespace kestrel
