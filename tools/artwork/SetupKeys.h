#pragma once

#include <QImage>
#include <QString>

namespace kestrel::artwork {

enum class KeyLight { On, Off };
enum class ButtonFace { Resting, Pressed, Disabled, Unlit, Lit };
enum class FieldState { Enabled, Disabled };

// Draws a user-assignable key, 78 × 78 units. Its face is light enough for black text in both
// states.
[[nodiscard]] QImage drawUserAssignableKey(KeyLight light, int scale);

// Draws a push button with its word, 56 × 31 units.
[[nodiscard]] QImage drawPushButton(const QString& word, ButtonFace face, int scale);

// Draws the light around a lit push button, 88 × 63 units; the button is in the middle.
[[nodiscard]] QImage drawButtonGlow(int scale);

// Draws the box of a shortcut field, 171 × 34 units.
[[nodiscard]] QImage drawTextBox(FieldState state, int scale);

} // namespace kestrel::artwork
