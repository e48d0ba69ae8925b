#pragma once

#include <QString>

namespace kestrel {
class MyShortcutField;
}

// What a capture field says to the user besides its shortcut.
namespace kestrel::FieldAdvice {

// Stands in an empty field that takes the next key.
inline const QString PressAKey = QStringLiteral("Press a key");

// The rule that has refused the last key of the field; empty if none has.
[[nodiscard]] QString refusal(const MyShortcutField& field);

[[nodiscard]] QString toolTip(const MyShortcutField& field);
// The description for assistive technology.
[[nodiscard]] QString spoken(const MyShortcutField& field);

} // namespace kestrel::FieldAdvice
