#pragma once

#include <QImage>
#include <QString>

namespace kestrel::artwork {

enum class KeyLight { On, Off };
enum class ButtonFace { Resting, Pressed, Disabled, Unlit };
enum class FieldState { Enabled, Disabled };

// A user-assignable key, 78 × 78 units. Both faces are light enough for black text.
[[nodiscard]] QImage drawUserAssignableKey(KeyLight light, int scale);

// A push button that carries its word, 56 × 31 units.
[[nodiscard]] QImage drawPushButton(const QString& word, ButtonFace face, int scale);

// The box that a shortcut is shown in, 171 × 34 units.
[[nodiscard]] QImage drawTextBox(FieldState state, int scale);

} // namespace kestrel::artwork
