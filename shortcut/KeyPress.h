#pragma once

#include "platform/KeyCodes.h"

#include <QString>

#include <optional>

class QKeyEvent;

namespace kestrel {

class KeyTranslation;

// A key-down event, whatever window system it came from.
struct KeyPress {
    KeyCode keyCode = 0;
    ModifierFlags flags = 0; // all bits of the event
    QString charactersIgnoringModifiers; // Shift is honoured
    bool isARepeat = false;

    // Missing for keys that make no key event of their own.
    [[nodiscard]] static std::optional<KeyPress> from(
        const QKeyEvent& event, KeyTranslation& translation);
};

} // namespace kestrel
