#pragma once

#include "platform/KeyCodes.h"

#include <QString>

#include <optional>

class QKeyEvent;

namespace kestrel {

class KeyTranslation;

// A key-down event in the terms of macOS, on every platform.
struct KeyPress {
    KeyCode keyCode = 0;
    ModifierFlags flags = 0; // all bits of the event
    QString charactersIgnoringModifiers; // Shift still applies
    bool isARepeat = false;

    // No value for modifier keys and for keys without a key code.
    [[nodiscard]] static std::optional<KeyPress> from(
        const QKeyEvent& event, KeyTranslation& translation);
};

} // namespace kestrel
