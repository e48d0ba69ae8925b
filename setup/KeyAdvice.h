#pragma once

#include <QString>

namespace kestrel {
class UserAssignableButton;
}

// What a key of the setup window tells the user who points at it.
namespace kestrel::KeyAdvice {

// All of the name and the shortcuts, of which the face may show less, and how to rename the key.
[[nodiscard]] QString toolTip(const UserAssignableButton& key);

} // namespace kestrel::KeyAdvice
